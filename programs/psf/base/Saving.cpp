// The lock keeps programs of ours apart. That the file is still the one that was read keeps all others from harm.
#include "programs/psf/base/Saving.h"

#include "platform/system/FileLock.h"

namespace tessaly::psf {

namespace {

Existing Replaceable(const Session& session) {
    return session.force ? Existing::ReplaceLinked : Existing::Replace;
}

} // namespace

int Replace(const std::string& file, Existing existing, const std::function<bool(const std::string&)>& write,
            const std::optional<FileState>& expected) {
    const std::error_code error = ReplaceWhole(file, existing, write, expected);
    if (!error) {
        return Success;
    }
    if (error == std::errc::resource_unavailable_try_again && expected) {
        return BeingChanged;
    }
    if (error == std::errc::file_exists) {
        PrintError(file + ": exists already; --force replaces it");
        return WrongUsage;
    }
    if (error == std::errc::too_many_links) {
        PrintError(file + ": has other names, which would keep the old text; --force replaces it all the same");
        return WrongUsage;
    }
    if (error == std::errc::operation_not_permitted) {
        PrintError(file + ": cannot be written: it has no write permission");
        return OutputFailed;
    }
    PrintError(file + ": cannot be written: " +
               (error == std::errc::operation_canceled ? "the disk may be full" : Reason(error)));
    return ExitStatus(Status::UnexpectedError);
}

int Save(const Session& session, const VornSrcObj& document, const std::string& file,
         const std::optional<FileState>& expected) {
    return Replace(
        file, Replaceable(session), [&](const std::string& path) { return document.SaveFile(path) == Status::Done; },
        expected);
}

int SaveBytes(Session& session, std::string_view bytes, const std::string& file,
              const std::optional<FileState>& expected) {
    const auto write = [&](const std::string& path) {
        try {
            const std::unique_ptr<OutputFile> output = session.files.OpenForOutput(path);
            output->Write(bytes);
            output->Close();
            return true;
        } catch (const std::system_error&) {
            return false;
        }
    };
    return Replace(file, Replaceable(session), write, expected);
}

int ChangeFile(const std::string& file, const std::function<int(const std::optional<FileState>& state)>& attempt) {
    constexpr int mostAttempts = 3;
    for (int i = 0; i < mostAttempts; ++i) {
        const std::unique_ptr<FileLock> turn = LockForReplacing(file);
        if (const int status = attempt(StateOf(file)); status != BeingChanged) {
            return status;
        }
    }
    PrintError(file + ": is being changed by another program");
    return BeingChanged;
}

int ChangeDocument(Session& session, const std::string& file, const std::function<int(VornSrcObj&)>& change) {
    return ChangeFile(file, [&](const std::optional<FileState>& state) {
        return WithDocument(session, file, [&](VornSrcObj& document) {
            const int status = change(document);
            return status == Success ? Save(session, document, file, state) : status;
        });
    });
}

} // namespace tessaly::psf
