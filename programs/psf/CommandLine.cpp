// The commands with their options, and what the help of each says. The program parses once and runs one of them.
#include "programs/psf/CommandLine.h"

#include "programs/psf/BuildJob.h"
#include "programs/psf/Commands.h"
#include "programs/psf/Test.h"
#include "programs/psf/base/Paths.h"
#include "programs/psf/base/Report.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cstdint>
#include <functional>
#include <iterator>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace tessaly::psf {

namespace {

// The command line, parsed; `run` is the command that it names.
struct CommandLine {
    CLI::App app{"Works on PSF files without a window.", "psf"};
    std::string codePage;
    std::string file;
    std::string second; // member, name or second file
    std::optional<std::string> output;
    std::vector<std::string> files;
    std::optional<std::string> filesFrom;
    std::string inputName;
    std::string format = "text";
    std::uint64_t number = 0;
    const CLI::Option* hasSecond = nullptr; // an empty name is a name, too
    const CLI::Option* hasNumber = nullptr;
    bool isToBeDeleted = false;
    bool force = false;
    bool json = false;
    bool lint = false;
    bool strict = false;
    bool onlyTell = false;
    bool global = false;
    MergeFiles merged;
    BuildOptions builds;
    TestOptions tests;
    std::string third;
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
        app.footer("psf COMMAND --help tells more about a command, with its exit statuses and an example.");
        AddFileCommands();
        AddMemberCommands();
        AddFunctionCommands();
        AddCodeCommands();
        AddTest();
        AddVersionControl();
        AddOtherForms();
        AddRecover();
    }

    // `more` stands at the end of its help: exit statuses and an example.
    CLI::App* Command(const char* name, const char* description, const char* more,
                      std::function<int(Session&)> action) {
        CLI::App* command = app.add_subcommand(name, description);
        command->callback([this, action = std::move(action)] { run = action; });
        command->footer(more);
        return command;
    }

    void AddFile(CLI::App* command) { command->add_option("FILE", file, "A PSF file")->required(); }

    // Of a command that only reads.
    void AddName(CLI::App* command) {
        command->add_option("--name", inputName, "How messages call standard input")->type_name("NAME");
    }

    // Of a command that replaces a file.
    void AddForce(CLI::App* command) {
        command->add_flag("--force", force, "Replace a file that has other names, too");
    }

    void AddInput(CLI::App* command) {
        command->add_option("FILE", file, "A PSF file; - is standard input")->required();
        AddName(command);
    }

    void AddPaths(CLI::App* command, const char* description) {
        command->add_option("PATH", files, description);
        command->add_option("--files-from", filesFrom, "Read more paths from this file, one a line or NUL-separated")
            ->type_name("FILE");
    }

    // More than 0; the library's own test names the greatest number that there is.
    static CLI::Validator Positive() {
        return {[](std::string& word) {
                    double value = 0;
                    const bool isPositive = CLI::detail::lexical_cast(word, value) && value > 0;
                    return isPositive ? "" : "\"" + word + "\" is no number above 0";
                },
                ""};
    }

    int ForEach(Session& session, const std::function<int(const std::string&)>& use,
                const TellUnread& tell = PrintUnread) {
        if (files.empty() && !filesFrom) {
            PrintError("PATH is required");
            return WrongUsage;
        }
        return ForEachFile(session, files, filesFrom, use, tell);
    }

    // Has the command take "-" for standard input.
    static Session& Reading(Session& session) {
        session.files.takesStandardInput = true;
        return session;
    }

    void AddFileCommands() {
        CLI::App* create = Command("new", "Write a PSF file with an empty program block",
                                   "Exit status: 0 done; 64 the file exists; 255 it cannot be written.\n"
                                   "Example: psf new Blink.PSF",
                                   [this](Session& session) { return New(session, file); });
        AddFile(create);
        create->add_flag("--force", force, "Replace a file that exists");

        CLI::App* resave = Command("resave", "Load IN and save it as OUT, which may be IN",
                                   "Exit status: 0 done; 2 IN does not load; 255 OUT cannot be written.\n"
                                   "Example: psf resave Blink.PSF Copy.PSF",
                                   [this](Session& session) { return Resave(session, file, second); });
        resave->add_option("IN", file, "The file to load")->required();
        resave->add_option("OUT", second, "The file to write")->required();
        AddForce(resave);
    }

    void AddMemberCommands() {
        CLI::App* show = Command("show", "List the members, or print one, or all as JSON",
                                 "Exit status: 0 done; 2 the file does not load; 4 it has no such member.\n"
                                 "Example: psf show Blink.PSF functions/Toggle",
                                 [this](Session& session) {
                                     if (json) {
                                         return ShowJson(Reading(session), file);
                                     }
                                     return hasSecond->empty() ? ShowList(Reading(session), file)
                                                               : ShowMember(Reading(session), file, second);
                                 });
        AddInput(show);
        auto* asJson = show->add_flag("--json", json, "Print the whole program block as one JSON object");
        hasSecond = show->add_option("MEMBER", second, "references, functions/NAME or events/NAME")->excludes(asJson);

        CLI::App* set = Command("set", "Replace a member's text by standard input",
                                "Exit status: 0 done; 2 the file does not load; 4 it has no such member; 64 standard "
                                "input is not UTF-8;\n255 the file cannot be written.\n"
                                "Example: psf set Blink.PSF events/OnKey < OnKey.c",
                                [this](Session& session) { return Set(session, file, second, strict); });
        AddFile(set);
        AddForce(set);
        set->add_option("MEMBER", second, "references, functions/NAME or events/NAME")->required();
        set->add_flag("--strict", strict, "Refuse characters that the code page lacks");
    }

    void AddFunctionCommands() {
        CLI::App* add = Command("add", "Add a function",
                                "Exit status: 0 done; 2 the file does not load; 7 the name collides with another; 64 "
                                "it is no name;\n255 the file cannot be written.\n"
                                "Example: psf add Blink.PSF Toggle",
                                [this](Session& session) { return Add(session, file, second); });
        AddFile(add);
        AddForce(add);
        add->add_option("NAME", second, "The name: letters and digits")->required();

        CLI::App* rename = Command("rename", "Rename a function",
                                   "Exit status: 0 done; 2 the file does not load; 4 it has no such function; 7 the "
                                   "new name collides with another;\n64 it is no name.\n"
                                   "Example: psf rename Blink.PSF Toggle Flip",
                                   [this](Session& session) { return Rename(session, file, second, third); });
        AddFile(rename);
        AddForce(rename);
        rename->add_option("OLD", second, "The name of the function")->required();
        rename->add_option("NEW", third, "The new one: letters and digits")->required();

        CLI::App* remove = Command("delete", "Delete a function",
                                   "Exit status: 0 done; 2 the file does not load; 4 it has no such function; 255 it "
                                   "has none, or cannot be written.\n"
                                   "Example: psf delete Blink.PSF Toggle",
                                   [this](Session& session) { return Delete(session, file, second); });
        AddFile(remove);
        AddForce(remove);
        remove->add_option("NAME", second, "The name of the function")->required();
    }

    void AddCodeCommands() {
        CLI::App* generate = Command("generate", "Write the generated C file",
                                     "Exit status: 0 done; 2 the file does not load; 6 no C file can be made or "
                                     "written.\n"
                                     "Example: psf generate Blink.PSF -o Blink.c",
                                     [this](Session& session) { return Generate(Reading(session), file, output); });
        AddInput(generate);
        AddForce(generate);
        generate->add_option("-o,--output", output, "The C file; without it, standard output")->type_name("OUT");

        CLI::App* check = Command("check", "Report what a load loses or changes",
                                  "Exit status: 0 nothing to report; 1 warnings; 2 a file does not load.\n"
                                  "Example: psf check --lint --format gcc stations/",
                                  [this](Session& session) { return CheckAll(session); });
        AddPaths(check, "Files, folders with such files, or - for standard input");
        AddName(check);
        check->add_flag("--lint", lint, "Report what each member's text shows by itself as well");
        check->add_option("--format", format, "The form of the report")
            ->type_name("FORMAT")
            ->check(CLI::IsMember(std::vector<std::string>(std::begin(ReportFormats), std::end(ReportFormats))));

        CLI::App* build =
            Command("build", "Generate C code, compile it and map the compiler's messages",
                    "Exit status: that of the compiler; 2 the file does not load; 6 no C file can be made "
                    "or written;\n127 there is no compiler.\n"
                    "Example: psf build Blink.PSF",
                    [this](Session& session) {
                        return WithAll(session, [&](const auto& all) { return Build(session, all, builds); });
                    });
        AddPaths(build, "Files, or folders with such files");
        build->add_option("-j,--jobs", builds.jobs, "How many compilers may run at the same time")
            ->type_name("N")
            ->check(Positive());
        build->add_option("-o,--output", builds.output, "The output name, for one file")->type_name("OUT");

        CLI::App* map = Command("map", "Copy standard input with positions in the C file mapped to members",
                                "Exit status: 0 done; 2 the file does not load; 127 there is no C file.\n"
                                "Example: ./Blink.out Blink.events 2>&1 | psf map Blink.PSF",
                                [this](Session& session) { return Map(session, file, output); });
        AddFile(map);
        map->add_option("--c-file", output, "The C file; without it, that of the settings")->type_name("CFILE");
    }

    void AddTest() {
        CLI::App* test =
            Command("test", "Build program blocks and run the scripts beside them",
                    "Exit status: 0 all cases pass; 1 one fails; 2 a path cannot be read; 4 there is no "
                    "case;\n127 the lines that ran are not known; 255 a report cannot be written.\n"
                    "Example: psf test --jobs 4 --junit report.xml stations/",
                    [this](Session& session) {
                        return WithAll(session, [&](const auto& all) { return Test(session, all, tests); });
                    });
        AddPaths(test, "Files, or folders with such files; those with NAME.events or NAME.CASE.events beside them");
        test->add_option("-j,--jobs", tests.jobs, "How many programs may run at the same time")
            ->type_name("N")
            ->check(Positive());
        test->add_option("--timeout", tests.timeout, "How long a case may take; the default is 10")
            ->type_name("SECONDS")
            ->check(Positive());
        test->add_option("--junit", tests.junit, "Write a report in JUnit's XML to this file")->type_name("FILE");
        test->add_flag("--coverage", tests.coverage, "Tell which lines ran; in FILE as XML, too")
            ->option_text("[=FILE]");
        test->add_option("--channel", tests.channels, "Give the channel N a name in the scripts")
            ->type_name("NAME=N")
            ->allow_extra_args(false);
    }

    void AddVersionControl() {
        CLI::App* tidy =
            Command("tidy", "Write the normal form, without empty lines at the ends of texts",
                    "Exit status: 0 done; 1 --check found a file that is not in it; 2 a file does not "
                    "load; 255 it cannot be written.\n"
                    "Example: psf tidy --check stations/",
                    [this](Session& session) {
                        return ForEach(session, [&](const std::string& each) { return Tidy(session, each, onlyTell); });
                    });
        AddPaths(tidy, "Files, folders with such files, or - from standard input to standard output");
        AddName(tidy);
        AddForce(tidy);
        tidy->add_flag("--check", onlyTell, "Change nothing, only tell");

        CLI::App* merge = Command("merge", "Merge two changed versions of a file into OURS, member by member",
                                  "Exit status: 0 done; 1 conflicts, marked in the texts; 2 a file does not load; 255 "
                                  "OURS cannot be written.\n"
                                  "Example: psf merge base.PSF ours.PSF theirs.PSF",
                                  [this](Session& session) { return Merge(session, merged); });
        merge->add_option("BASE", merged.base, "The version that both come from")->required();
        merge->add_option("OURS", merged.ours, "One version, which is replaced by the result")->required();
        merge->add_option("THEIRS", merged.theirs, "The other version")->required();
        AddForce(merge);
        merge->add_option("--name", merged.name, "How messages call OURS")->type_name("NAME");
    }

    void AddOtherForms() {
        CLI::App* text = Command("text", "Print all texts, for reading and comparing",
                                 "Exit status: 0 done, also for a part of a program block; 2 the file cannot be read.\n"
                                 "Example: psf text Blink.PSF",
                                 [this](Session& session) { return ShowText(session, file); });
        AddFile(text);

        CLI::App* out = Command("export", "Write a file for each member, in UTF-8, into a folder",
                                "Exit status: 0 done; 2 the file does not load; 255 something cannot be written.\n"
                                "Example: psf export Blink.PSF blink/",
                                [this](Session& session) { return Export(session, file, second); });
        AddFile(out);
        out->add_option("DIR", second, "The folder, which is made if it is missing")->required();

        CLI::App* in = Command("import", "Make a file of what export has written",
                               "Exit status: 0 done; 4 a member's file is missing; 7 two names collide; 64 a file is "
                               "not UTF-8;\n255 FILE cannot be written.\n"
                               "Example: psf import blink/ Blink.PSF",
                               [this](Session& session) { return Import(session, second, file); });
        in->add_option("DIR", second, "The folder")->required();
        AddFile(in);
        AddForce(in);

        CLI::App* setup = Command("git-setup", "Have git use tidy, merge and text for PSF files",
                                  "Exit status: 0 done; 4 the current folder is in no repository; 127 there is no git; "
                                  "255 something cannot be written.\n"
                                  "Example: psf git-setup",
                                  [this](Session& session) { return GitSetup(session, global, codePage); });
        setup->add_flag("--global", global, "For all repositories of this user");
    }

    // Runs `command` on all files at once.
    int WithAll(Session& session, const std::function<int(const std::vector<std::string>&)>& command) {
        std::vector<std::string> all;
        const int status = ForEach(session, [&all](const std::string& each) {
            all.push_back(each);
            return Success;
        });
        const int done = status == WrongUsage ? Success : command(all);
        return done == Success ? status : done;
    }

    int CheckAll(Session& session) {
        const std::unique_ptr<Report> report = MakeReport(format, lint);
        const int worst = ForEach(
            session, [&](const std::string& each) { return Check(session, each, lint, *report); }, UnreadInto(*report));
        if (worst != WrongUsage) {
            report->End();
        }
        return worst;
    }

    void AddRecover() {
        CLI::App* recover =
            Command("recover", "List what the window kept of texts that were not saved; show or write one",
                    "Exit status: 0 done; 4 there is no such number; 255 it cannot be written or removed.\n"
                    "Example: psf recover 1 -o Found.PSF",
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
        AddForce(recover);
        remove->needs(one);
    }

    bool HasCommand(const std::string& name) const {
        return !app.get_subcommands([&name](const CLI::App* each) { return each->check_name(name); }).empty();
    }

    // What is wrong with the command itself, which the library only misses; "" when it is there.
    std::string WrongCommand(const std::vector<std::string>& arguments) const {
        for (std::size_t i = 1; i < arguments.size(); ++i) {
            const std::string& word = arguments[i];
            if (word == "--codepage") {
                ++i;
            } else if (word == "-h" || word == "--help" || word == "--version") {
                return "";
            } else if (word.starts_with('-') && !word.starts_with("--codepage=")) {
                return "there is no option \"" + word + "\" in front of a command";
            } else if (!word.starts_with('-')) {
                return HasCommand(word) ? "" : "there is no command \"" + word + "\"";
            }
        }
        return "";
    }
};

} // namespace

int Run(const std::vector<std::string>& arguments) {
    CommandLine commandLine;
    if (const std::string wrong = commandLine.WrongCommand(arguments); !wrong.empty()) {
        PrintError(wrong + "; psf --help lists them");
        return WrongUsage;
    }
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
    session.force = commandLine.force;
    if (!commandLine.inputName.empty()) {
        session.inputName = commandLine.inputName;
    }
    session.codePage = commandLine.codePage.empty() ? MakeSystemCodePage() : MakeCodePage(commandLine.codePage);
    if (!session.codePage) {
        PrintError("unknown code page \"" + commandLine.codePage + "\"");
        return WrongUsage;
    }
    return commandLine.run(session);
}

} // namespace tessaly::psf
