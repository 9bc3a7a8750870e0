// Times one start of a program up to its usable window: window_timer TITLE BYTES COMMAND [ARG...]. Counts from fork():
//   visible: a new top-level window whose title contains TITLE is viewable;
//   answers: that window answers a _NET_WM_PING, so its event loop runs;
//   usable: from here on the program uses less than RestCpu in Rest, and behind that it answers once more.
// Prints these three in milliseconds, the CPU time used until the last, and bytes of memory: peak resident, private.
// The program, which must have read BYTES at least, is killed at the end.
#include <X11/Xatom.h>
#include <X11/Xlib.h>
#include <algorithm>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <fcntl.h>
#include <fstream>
#include <memory>
#include <poll.h>
#include <stdexcept>
#include <string>
#include <string_view>
#include <sys/wait.h>
#include <unistd.h>
#include <utility>
#include <vector>

namespace {

constexpr double Patience = 120000; // milliseconds, like all times here
constexpr double Rest = 300;
constexpr double RestCpu = 3; // what a blinking caret needs, and the timers of an idle program
constexpr int SampleTime = 2;

double Now() {
    using Milliseconds = std::chrono::duration<double, std::milli>;
    return Milliseconds(std::chrono::steady_clock::now().time_since_epoch()).count();
}

// The program, which ends with this object.
class Program {
public:
    explicit Program(char** command) : mStart(Now()), mId(::fork()) {
        if (mId == 0) {
            const int nothing = ::open("/dev/null", O_RDWR);
            for (const int descriptor : {0, 1, 2}) {
                ::dup2(nothing, descriptor);
            }
            ::execvp(command[0], command);
            ::_exit(127);
        }
        if (mId < 0 || ::clock_getcpuclockid(mId, &mClock) != 0) {
            throw std::runtime_error("the program cannot be started");
        }
    }
    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;
    ~Program() {
        if (!mHasEnded) {
            ::kill(mId, SIGKILL);
            ::waitpid(mId, nullptr, 0);
        }
    }

    double Age() const { return Now() - mStart; }

    // The CPU time of all threads.
    double Cpu() const {
        timespec used{};
        ::clock_gettime(mClock, &used);
        return static_cast<double>(used.tv_sec) * 1e3 + static_cast<double>(used.tv_nsec) / 1e6;
    }

    void CheckAlive() {
        mHasEnded = mHasEnded || ::waitpid(mId, nullptr, WNOHANG) == mId;
        if (mHasEnded || Age() > Patience) {
            throw std::runtime_error(mHasEnded ? "the program has ended" : "the program takes too long");
        }
    }

    // The sum of all lines of a file in /proc that begin with `key`.
    long long Number(const std::string& file, std::string_view key) const {
        std::ifstream in("/proc/" + std::to_string(mId) + "/" + file);
        long long sum = 0;
        for (std::string line; std::getline(in, line);) {
            if (line.starts_with(key)) {
                sum += std::atoll(line.c_str() + key.size());
            }
        }
        return sum;
    }

private:
    double mStart;
    pid_t mId;
    clockid_t mClock{};
    bool mHasEnded = false;
};

struct Free {
    void operator()(void* memory) const { XFree(memory); }
};

// Watches all windows that are made from now on.
class Screen {
public:
    explicit Screen(std::string title) : mTitle(std::move(title)), mDisplay(XOpenDisplay(nullptr)) {
        if (!mDisplay) {
            throw std::runtime_error("no display");
        }
        // Windows come and go while they are asked about.
        XSetErrorHandler([](Display*, XErrorEvent*) { return 0; });
        mName = XInternAtom(mDisplay, "_NET_WM_NAME", False);
        mText = XInternAtom(mDisplay, "UTF8_STRING", False);
        mPing = XInternAtom(mDisplay, "_NET_WM_PING", False);
        mProtocols = XInternAtom(mDisplay, "WM_PROTOCOLS", False);
        // An answer to a ping comes to whoever listens as a window manager does.
        XSelectInput(mDisplay, DefaultRootWindow(mDisplay), SubstructureNotifyMask | StructureNotifyMask);
        XSync(mDisplay, False);
    }
    Screen(const Screen&) = delete;
    Screen& operator=(const Screen&) = delete;
    ~Screen() { XCloseDisplay(mDisplay); }

    // Waits for something to happen, SampleTime at most, and takes notice of it.
    void Wait() {
        XFlush(mDisplay);
        pollfd connection{ConnectionNumber(mDisplay), POLLIN, 0};
        if (XPending(mDisplay) == 0) {
            ::poll(&connection, 1, SampleTime);
        }
        while (XPending(mDisplay) > 0) {
            XEvent event;
            XNextEvent(mDisplay, &event);
            Take(event);
        }
    }

    bool IsVisible() {
        const auto found = std::find_if(mMade.begin(), mMade.end(), [this](Window each) { return IsIt(each); });
        mWindow = found == mMade.end() ? None : *found;
        return mWindow != None;
    }

    void Ping() {
        mIsAnswered = false;
        XEvent event{};
        event.xclient.type = ClientMessage;
        event.xclient.window = mWindow;
        event.xclient.message_type = mProtocols;
        event.xclient.format = 32;
        event.xclient.data.l[0] = static_cast<long>(mPing);
        event.xclient.data.l[1] = CurrentTime;
        event.xclient.data.l[2] = static_cast<long>(mWindow);
        XSendEvent(mDisplay, mWindow, False, NoEventMask, &event);
        XFlush(mDisplay);
    }

    bool IsAnswered() const { return mIsAnswered; }

private:
    void Take(const XEvent& event) {
        if (event.type == CreateNotify && event.xcreatewindow.parent == DefaultRootWindow(mDisplay)) {
            mMade.push_back(event.xcreatewindow.window);
        } else if (event.type == ClientMessage && event.xclient.message_type == mProtocols) {
            mIsAnswered = mIsAnswered || (static_cast<Atom>(event.xclient.data.l[0]) == mPing &&
                                          static_cast<Window>(event.xclient.data.l[2]) == mWindow);
        }
    }

    bool IsIt(Window window) const {
        XWindowAttributes attributes;
        return XGetWindowAttributes(mDisplay, window, &attributes) != 0 && attributes.map_state == IsViewable &&
               Title(window).find(mTitle) != std::string::npos;
    }

    std::string Title(Window window) const {
        Atom type = None;
        int format = 0;
        unsigned long size = 0;
        unsigned long left = 0;
        unsigned char* bytes = nullptr;
        XGetWindowProperty(mDisplay, window, mName, 0, 1024, False, mText, &type, &format, &size, &left, &bytes);
        const std::unique_ptr<unsigned char, Free> owner(bytes);
        return bytes && format == 8 ? std::string(reinterpret_cast<const char*>(bytes), size) : std::string();
    }

    std::string mTitle;
    Display* mDisplay;
    Atom mName = None;
    Atom mText = None;
    Atom mPing = None;
    Atom mProtocols = None;
    std::vector<Window> mMade;
    Window mWindow = None;
    bool mIsAnswered = false;
};

// When the program has used how much CPU time.
struct Sample {
    double age;
    double cpu;
};

// Waits for the end of the first rest from now on and returns its begin.
Sample WaitForRest(Program& program, Screen& screen) {
    std::vector<Sample> samples;
    std::size_t first = 0;
    for (;;) {
        samples.push_back({program.Age(), program.Cpu()});
        const Sample& last = samples.back();
        while (last.cpu - samples[first].cpu > RestCpu) {
            ++first;
        }
        if (last.age - samples[first].age >= Rest) {
            return samples[first];
        }
        program.CheckAlive();
        screen.Wait();
    }
}

void Measure(const std::string& title, long long bytes, char** command) {
    Screen screen(title);
    Program program(command);
    while (!screen.IsVisible()) {
        program.CheckAlive();
        screen.Wait();
    }
    const double visible = program.Age();
    const auto waitForAnswer = [&] {
        for (screen.Ping(); !screen.IsAnswered(); screen.Wait()) {
            program.CheckAlive();
        }
        return program.Age();
    };
    const double answers = waitForAnswer();
    const Sample usable = WaitForRest(program, screen);
    const double before = program.Age();
    if (waitForAnswer() - before > Rest) {
        throw std::runtime_error("the program came to rest, but does not answer");
    }
    if (program.Number("io", "rchar:") < bytes) {
        throw std::runtime_error("the program has not read its file");
    }
    constexpr long long kibi = 1024;
    const long long peak = program.Number("status", "VmHWM:") * kibi;
    const long long own =
        (program.Number("smaps_rollup", "Private_Clean:") + program.Number("smaps_rollup", "Private_Dirty:")) * kibi;
    std::printf("%.2f %.2f %.2f %.2f %lld %lld\n", visible, answers, usable.age, usable.cpu, peak, own);
}

} // namespace

int main(int count, char** arguments) {
    if (count < 4) {
        std::fputs("usage: window_timer TITLE BYTES COMMAND [ARG...]\n", stderr);
        return 64;
    }
    try {
        Measure(arguments[1], std::atoll(arguments[2]), arguments + 3);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "window_timer: %s: %s\n", arguments[3], error.what());
        return 1;
    }
    return 0;
}
