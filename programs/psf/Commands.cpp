// One function a command. A file is written only when everything before went well.
#include "programs/psf/Commands.h"

#include "app/Catalogue.h"
#include "document/EncodedOutput.h"
#include "document/Members.h"
#include "document/NewFunction.h"
#include "programs/psf/base/Json.h"
#include "programs/psf/base/Printable.h"
#include "programs/psf/base/Saving.h"

#include <cstdio>

namespace tessaly::psf {

namespace {

// Takes a generation that is made only to see whether it succeeds.
class Discard final : public CCodeSink {
public:
    void Write(std::string_view, CCodeOrigin) override {}
};

class StandardOutput final : public OutputFile {
public:
    void Write(std::string_view bytes) override { Print(bytes); }
    void Close() override {}
};

} // namespace

int New(Session& session, const std::string& file) {
    const VornSrcObj document = session.NewDocument();
    if (session.force) {
        return Save(session, document, file);
    }
    return Replace(file, Existing::Keep,
                   [&](const std::string& path) { return document.SaveFile(path) == Status::Done; });
}

int ShowList(Session& session, const std::string& file) {
    return WithDocument(session, file, [&](VornSrcObj& document) {
        for (const CCodeOrigin& member : AllMembers(document)) {
            Print(Printable(MemberName(document, member)) + "\n");
        }
        return Success;
    });
}

int ShowMember(Session& session, const std::string& file, const std::string& member) {
    return WithDocument(session, file, [&](VornSrcObj& document) {
        const std::optional<CCodeOrigin> found = FindOrSay(session, document, file, member);
        if (!found) {
            return ExitStatus(Status::NotFound);
        }
        Print(MemberText(document, *found));
        return Success;
    });
}

int ShowJson(Session& session, const std::string& file) {
    VornSrcObj document = session.NewDocument();
    const Status status = Load(session, document, file);
    nlohmann::ordered_json functions = nlohmann::ordered_json::array();
    for (std::int32_t i = 0; i < document.GetFunctionCount(); ++i) {
        functions.push_back({{"name", document.Functions().NameAt(i)},
                             {"prototype", document.Functions().PrototypeAt(i)},
                             {"code", document.Functions().CodeAt(i)}});
    }
    nlohmann::ordered_json events = nlohmann::ordered_json::object();
    for (std::int32_t i = 0; i < EventCount; ++i) {
        events[std::string(EventTable[static_cast<std::size_t>(i)].name)] = document.EventCodeAt(i);
    }
    // Not left to the first key: without memory for it the library would be left with half an object, and end the
    // program.
    nlohmann::ordered_json json = nlohmann::ordered_json::object();
    json["status"] = static_cast<std::int32_t>(status);
    json["references"] = document.VarCode();
    json["functions"] = std::move(functions);
    json["events"] = std::move(events);
    Print(ToText(json) + "\n");
    return ExitStatus(status);
}

bool IsFunctionName(const std::string& name) {
    const NameCheck check = name.empty() ? NameCheck::BadCharacter : CheckFunctionName(name);
    if (check != NameCheck::Accepted) {
        const Text reason = check == NameCheck::BeginsWithDigit ? Text::NameBeginsWithDigit : Text::NameHasBadCharacter;
        PrintError("\"" + name + "\": " + std::string(Row(reason).english));
    }
    return check == NameCheck::Accepted;
}

int Add(Session& session, const std::string& file, const std::string& name) {
    if (!IsFunctionName(name)) {
        return WrongUsage;
    }
    return ChangeDocument(session, file, [&](VornSrcObj& document) {
        const Status status = document.AddFunction(name, "", NewFunctionText(name));
        if (status == Status::NameCollision) {
            PrintError(file + ": \"" + name + "\" collides with the function \"" +
                       std::string(document.Functions().FindCollision(name).value_or("")) +
                       "\", whose name begins with it");
            return ExitStatus(status);
        }
        if (status != Status::Done) {
            PrintError(file + ": \"" + name + "\" cannot be added");
            return ExitStatus(status);
        }
        return Success;
    });
}

int Delete(Session& session, const std::string& file, const std::string& name) {
    return ChangeDocument(session, file, [&](VornSrcObj& document) {
        const bool empty = document.GetFunctionCount() == 0;
        if (const Status status = document.DeleteFunction(name); status != Status::Done) {
            PrintError(file +
                       (empty || status == Status::NotFound ? ": there is no function \"" : ": cannot delete \"") +
                       name + "\"");
            return ExitStatus(status);
        }
        return Success;
    });
}

int Resave(Session& session, const std::string& input, const std::string& output) {
    const std::optional<FileState> source = StateOf(input);
    const std::optional<FileState> target = StateOf(output);
    if (source && target && source->device == target->device && source->number == target->number) {
        return ChangeDocument(session, output, [](VornSrcObj&) { return Success; });
    }
    return WithDocument(session, input, [&](VornSrcObj& document) { return Save(session, document, output); });
}

std::string GenerationProblem(const VornSrcObj& document) {
    Discard discard;
    return document.BuildCCode(discard) == Status::Done
               ? ""
               : "C code cannot be generated: the code of a function begins with \"{\"";
}

int Generate(Session& session, const std::string& file, const std::optional<std::string>& output) {
    return WithDocument(session, file, [&](VornSrcObj& document) {
        if (const std::string problem = GenerationProblem(document); !problem.empty()) {
            PrintError(session.NameOf(file) + ": " + problem);
            return ExitStatus(Status::GenerationFailed);
        }
        if (!output) {
            EncodedOutput encoded(std::make_unique<StandardOutput>(), *session.codePage);
            CCodeFileSink sink(encoded);
            document.BuildCCode(sink);
            encoded.Close();
            return Success;
        }
        const int status =
            Replace(*output, session.force ? Existing::ReplaceLinked : Existing::Replace,
                    [&](const std::string& path) { return document.BuildCCodeFile(path) == Status::Done; });
        return status == ExitStatus(Status::UnexpectedError) ? ExitStatus(Status::GenerationFailed) : status;
    });
}

} // namespace tessaly::psf
