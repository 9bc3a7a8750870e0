// psf, the command-line companion: the document without a window, for scripts, version control and servers.
#include "programs/psf/CommandLine.h"
#include "programs/psf/base/Session.h"

#include <cstdio>
#include <cstdlib>
#include <exception>
#include <new>
#include <string>
#include <string_view>
#include <vector>

namespace {

using namespace tessaly::psf;

int RunAndFlush(const std::vector<std::string>& arguments) {
    try {
        const int status = Run(arguments);
        if (std::fflush(stdout) != 0 || std::ferror(stdout) != 0) {
            PrintError("standard output cannot be written");
            return OutputFailed;
        }
        return status;
    } catch (const std::bad_alloc&) {
        PrintError(OutOfMemory);
    } catch (const std::exception& error) {
        PrintError(error.what());
    }
    return ExitStatus(tessaly::Status::UnexpectedError);
}

// For exceptions beyond every catch: before main(), in a destructor, and without memory for the exception itself.
[[noreturn]] void Terminate() {
    std::string_view message = OutOfMemory;
    if (std::current_exception()) {
        try {
            throw;
        } catch (const std::bad_alloc&) {
        } catch (...) {
            message = "unexpected error";
        }
    }
    PrintError(message);
    std::_Exit(ExitStatus(tessaly::Status::UnexpectedError));
}

// In front of everything else that happens before main(), because that allocates.
[[gnu::constructor(101)]] void SetTerminate() {
    std::set_terminate(Terminate);
}

} // namespace

int main(int argc, char** argv) {
    return RunWithArguments(argc, argv, RunAndFlush);
}
