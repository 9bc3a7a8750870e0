"""A fresh Debian to try the package in, which is in $TESSALY_DEB."""
import os
import pathlib
import subprocess

HERE = pathlib.Path(__file__).resolve().parent
DEB = pathlib.Path(os.environ["TESSALY_DEB"])


class Debian:
    """A Debian of its own, in another mount namespace; thrown away at the end."""

    def __init__(self, *files):
        self.process = subprocess.Popen(
            [HERE / "fresh-debian", *files], stdin=subprocess.PIPE, stdout=subprocess.PIPE, text=True
        )
        self.root = self.process.stdout.readline().strip()
        assert self.root, "no fresh Debian"

    def enter(self, command, user="root"):
        inside = ["runuser", "-u", user, "--"] if user != "root" else []
        return [
            "nsenter", "--mount", "--target", str(self.process.pid), "chroot", self.root, *inside,
            "env", "-i", "PATH=/usr/sbin:/usr/bin:/sbin:/bin", f"HOME={'/root' if user == 'root' else '/home/' + user}",
            "LC_ALL=C.UTF-8", "DEBIAN_FRONTEND=noninteractive", "sh", "-c", command,
        ]

    def run(self, command, user="root", **options):
        """Runs a shell command to its end and returns what it wrote; it must succeed."""
        result = subprocess.run(self.enter(command, user), capture_output=True, text=True, timeout=600, **options)
        assert result.returncode == 0, f"{command}\n{result.stdout}{result.stderr}"
        return result.stdout

    def files(self):
        everything = self.run("find /etc /usr /opt /srv /var/lib /boot ! -type d | sort")
        return everything.splitlines()

    def close(self):
        self.process.stdin.close()
        self.process.wait(timeout=60)
