// The steps of the window's Build command, in its order.
#include "app/Catalogue.h"
#include "app/CompilerCommand.h"
#include "app/Settings.h"
#include "diagnostics/Diagnostics.h"
#include "diagnostics/RewriteMessages.h"
#include "platform/system/FileLock.h"
#include "platform/system/Process.h"
#include "platform/text/TerminalText.h"
#include "programs/psf/Commands.h"
#include "programs/psf/Printable.h"

namespace tessaly::psf {

namespace {

// What a compiler cannot know, or knows at another place only, in the form of its own messages.
std::string HiddenMistakes(const VornSrcObj& document, const std::string& file) {
    std::string text;
    for (const Diagnostic& each : HiddenDiagnostics(document)) {
        text.append(Printable(file + ":" + each.member + ":" + std::to_string(each.line) + ": warning: " + each.text));
        text.append("\n");
    }
    return text;
}

// Why `path` cannot be written.
std::string WriteProblem(Session& session, const std::string& path) {
    try {
        session.files.OpenForOutput(path)->Close();
        return "the disk may be full";
    } catch (const std::system_error& error) {
        return Reason(error.code());
    }
}

} // namespace

CompilerSettings ReadCompilerSettings(SequentialFiles& files) {
    const std::unique_ptr<Registry> registry = OpenSettings(files, PrintError);
    return {ReadRegValue(*registry, Registry::LocalMachine, SettingsKey, CompBatSetting),
            ReadRegValue(*registry, Registry::LocalMachine, SettingsKey, CompFileNameSetting)};
}

int Build(Session& session, const std::string& file) {
    VornSrcObj document = session.NewDocument();
    if (const Status status = Load(session, document, file); status != Status::Done) {
        return ExitStatus(status);
    }
    const CompilerSettings settings = ReadCompilerSettings(session.files);
    if (settings.batchFile.empty() || settings.cFile.empty()) {
        PrintError(std::string(Row(Text::CompilerMissing).english) +
                   " (the settings FCompBat and FCompFileName must both be set)");
        return CompilerMissing;
    }
    const std::string commandLine = CompilerCommandLine(settings.batchFile, file);
    if (!CarriesArgument(commandLine, OutputName(file))) {
        PrintError(file + ": the command line of the compiler cannot carry a path with " +
                   std::string(UncarriedCharacters()));
        return WrongUsage;
    }
    const std::unique_ptr<FileLock> turn = LockForWriting(
        settings.cFile, [&] { PrintError(settings.cFile + ": waiting for another build with this C file"); });
    BuildMap map;
    if (const Status status = BuildMap::BuildCCodeFile(document, settings.cFile, map); status != Status::Done) {
        if (CheckGeneration(session, document, file) == Success) {
            PrintError(settings.cFile + ": the C file cannot be written: " + WriteProblem(session, settings.cFile));
        }
        return ExitStatus(status);
    }
    std::string output;
    const ProcessResult result = RunProcess(commandLine, [&output](std::string_view piece) { output += piece; });
    if (!result.Started()) {
        PrintError(settings.batchFile + ": the compiler cannot be started: " + Reason(result.startError));
        return CompilerMissing;
    }
    Print(HiddenMistakes(document, file));
    Print(PrintableLines(RewriteMessages(map, file, WithoutTerminalSequences(CompilerText(output)))));
    return result.exitStatus;
}

} // namespace tessaly::psf
