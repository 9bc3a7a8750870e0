// psf, the command-line companion: the document without a window, for scripts, version control and servers.
#include "programs/psf/Commands.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <functional>
#include <new>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace {

using namespace tessaly::psf;

// The command line, parsed; `run` is the command that it names.
struct CommandLine {
    CLI::App app{"Works on program source files (PSF) without a window.", "psf"};
    std::string codePage;
    std::string file;
    std::string second; // member, name or second file
    std::optional<std::string> output;
    std::vector<std::string> files;
    std::uint64_t number = 0;
    const CLI::Option* hasSecond = nullptr; // an empty name is a name, too
    const CLI::Option* hasNumber = nullptr;
    bool isToBeDeleted = false;
    bool force = false;
    bool json = false;
    bool lint = false;
    std::function<int(Session&)> run;

    CommandLine() {
        app.require_subcommand(1);
        app.fallthrough();
        app.allow_windows_style_options(false); // a path may begin with a slash there, too
        app.set_version_flag("--version", "psf " TESSALY_VERSION);
        app.add_option("--codepage", codePage,
                       "Code page of PSF and C files; the default is " + std::string(HostCodePageName()))
            ->envname("TESSALY_CODEPAGE")
            ->type_name("NAME");
        AddFileCommands();
        AddMemberCommands();
        AddCodeCommands();
        AddRecover();
    }

    CLI::App* Command(const char* name, const char* description, std::function<int(Session&)> action) {
        CLI::App* command = app.add_subcommand(name, description);
        command->callback([this, action = std::move(action)] { run = action; });
        return command;
    }

    void AddFile(CLI::App* command) { command->add_option("FILE", file, "A program source file")->required(); }

    void AddFileCommands() {
        CLI::App* create = Command("new", "Write a PSF that holds the default document",
                                   [this](Session& session) { return New(session, file, force); });
        AddFile(create);
        create->add_flag("--force", force, "Replace a file that exists");

        CLI::App* resave = Command("resave", "Load IN and save it as OUT, which may be IN",
                                   [this](Session& session) { return Resave(session, file, second); });
        resave->add_option("IN", file, "The file to load")->required();
        resave->add_option("OUT", second, "The file to write")->required();
    }

    void AddMemberCommands() {
        CLI::App* show = Command("show", "List the members, or print one, or all as JSON", [this](Session& session) {
            if (json) {
                return ShowJson(session, file);
            }
            return hasSecond->empty() ? ShowList(session, file) : ShowMember(session, file, second);
        });
        AddFile(show);
        auto* asJson = show->add_flag("--json", json, "Print the whole document as one JSON object");
        hasSecond = show->add_option("MEMBER", second, "references, functions/NAME or events/NAME")->excludes(asJson);

        CLI::App* set = Command("set", "Replace a member's text by standard input",
                                [this](Session& session) { return Set(session, file, second); });
        AddFile(set);
        set->add_option("MEMBER", second, "references, functions/NAME or events/NAME")->required();

        CLI::App* add =
            Command("add", "Add a function", [this](Session& session) { return Add(session, file, second); });
        AddFile(add);
        add->add_option("NAME", second, "The name: letters and digits")->required();

        CLI::App* remove =
            Command("delete", "Delete a function", [this](Session& session) { return Delete(session, file, second); });
        AddFile(remove);
        remove->add_option("NAME", second, "The name of the function")->required();
    }

    void AddCodeCommands() {
        CLI::App* generate = Command("generate", "Write the generated C file",
                                     [this](Session& session) { return Generate(session, file, output); });
        AddFile(generate);
        generate->add_option("-o,--output", output, "The C file; without it, standard output")->type_name("OUT");

        CLI::App* check = Command("check", "Report what a load loses or changes", [this](Session& session) {
            int worst = Success;
            for (const std::string& each : files) {
                worst = std::max(worst, Check(session, each, lint));
            }
            return worst;
        });
        check->add_option("FILE", files, "Program source files")->required();
        check->add_flag("--lint", lint, "Report what each member's text shows by itself as well");

        CLI::App* build = Command("build", "Generate C code, compile it and map the compiler's messages",
                                  [this](Session& session) { return Build(session, file); });
        AddFile(build);

        CLI::App* map = Command("map", "Copy standard input with positions in the C file mapped to members",
                                [this](Session& session) { return Map(session, file, output); });
        AddFile(map);
        map->add_option("--c-file", output, "The C file; without it, that of the settings")->type_name("CFILE");
    }

    void AddRecover() {
        CLI::App* recover =
            Command("recover", "List what the window kept of texts that were not saved; show or write one",
                    [this](Session& session) {
                        if (hasNumber->empty()) {
                            return json ? RecoverJson(session) : RecoverList(session);
                        }
                        if (isToBeDeleted) {
                            return RecoverDelete(session, number);
                        }
                        return output ? RecoverWrite(session, number, *output) : RecoverShow(session, number);
                    });
        auto* one = recover->add_option("N", number, "A number of the list; alone, shows what differs from the file");
        hasNumber = one;
        recover->add_flag("--json", json, "Print the list as JSON")->excludes(one);
        auto* write = recover->add_option("-o,--output", output, "Write it to this file instead")->type_name("OUT");
        auto* remove = recover->add_flag("--delete", isToBeDeleted, "Remove it for good");
        write->needs(one)->excludes(remove);
        remove->needs(one);
    }
};

int Run(const std::vector<std::string>& arguments) {
    CommandLine commandLine;
    try {
        std::vector<std::string> lastFirst(arguments.rbegin(), arguments.rend());
        lastFirst.pop_back(); // the program's name
        commandLine.app.parse(std::move(lastFirst));
    } catch (const CLI::ParseError& error) {
        if (error.get_exit_code() == static_cast<int>(CLI::ExitCodes::Success)) {
            return commandLine.app.exit(error); // --help and --version
        }
        PrintError(error.what());
        return WrongUsage;
    }
    Session session;
    session.codePage =
        commandLine.codePage.empty() ? tessaly::MakeSystemCodePage() : tessaly::MakeCodePage(commandLine.codePage);
    if (!session.codePage) {
        PrintError("unknown code page \"" + commandLine.codePage + "\"");
        return WrongUsage;
    }
    return commandLine.run(session);
}

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
