// The commands of psf. Each returns its exit status and has said what went wrong.
#pragma once

#include "programs/psf/base/Session.h"

#include <cstdint>
#include <optional>
#include <string>

namespace tessaly::psf {

class Report;

int New(Session& session, const std::string& file);
int ShowList(Session& session, const std::string& file);
int ShowMember(Session& session, const std::string& file, const std::string& member);
int ShowJson(Session& session, const std::string& file);
// The new text is standard input. Says which of its characters the code page lacks; when it is `strict` that is
// WrongUsage, and nothing is changed.
int Set(Session& session, const std::string& file, const std::string& member, bool strict);

int Add(Session& session, const std::string& file, const std::string& name);
int Delete(Session& session, const std::string& file, const std::string& name);
int Rename(Session& session, const std::string& file, const std::string& oldName, const std::string& newName);

// Whether a function may be given that name; says why not.
bool IsFunctionName(const std::string& name);

int Resave(Session& session, const std::string& input, const std::string& output);

// Why no C file can be made of `document`; "" when one can.
std::string GenerationProblem(const VornSrcObj& document);

// Without `output` the C file goes to standard output.
int Generate(Session& session, const std::string& file, const std::optional<std::string>& output);

// Writes a file for each member of `file` into `folder`, and the order of the functions. Functions that are not there
// any more lose their files.
int Export(Session& session, const std::string& file, const std::string& folder);

// Makes `file` of such a folder. NotFound when a file of it is missing, NameCollision, WrongUsage for what is not
// UTF-8; `file` stays as it was then.
int Import(Session& session, const std::string& folder, const std::string& file);

// Prints the whole document as UTF-8, each member under a line with its name in brackets. What could be read is printed
// when the load fails, too; that is Success. LoadFailed when the file cannot be read at all.
int ShowText(Session& session, const std::string& file);

// Writes `file` in normal form: every text and every stored prototype loses the line breaks at its end. Standard input
// goes to standard output. With `onlyTell` it only prints the first line that would change; WarningsFound then.
int Tidy(Session& session, const std::string& file, bool onlyTell);

// Merges two versions of a document into `ours`, member by member, in normal form. Says for each member with a conflict
// where it is; WarningsFound then. The status of a load that failed, and `ours` untouched. Messages call `ours` `name`.
struct MergeFiles {
    std::string base;
    std::string ours;
    std::string theirs;
    std::string name;
};
int Merge(Session& session, const MergeFiles& files);

// Configures git for program source files: the repository of the current folder, or all of the user's. Says what it
// changed. With a `codePage` the commands that git runs name it.
int GitSetup(Session& session, bool global, const std::string& codePage);

// psf check: what a load loses or changes without a word.
// Tells `report` the warnings for `file`, in the order of the lines. Returns Success, WarningsFound, or the load's
// status. With `lint`, what each member's text shows by itself and what is wrong with the whole file's bytes is told,
// too. `file` may be standard input.
int Check(Session& session, const std::string& file, bool lint, Report& report);

// Tells `report` of what cannot be read, as well as standard error.
TellUnread UnreadInto(Report& report);

// psf map: copies standard input to standard output, line by line as it comes, with the positions in the C file of the
// last build of `file` led to members. That is `cFile`, or the one that the settings name, or the one that `file` has
// by itself where that is newer. What it holds is compared with what `file` would give now, because `file` may have
// been edited since. Returns the load's status, or CompilerMissing without a C file.
int Map(Session& session, const std::string& file, const std::optional<std::string>& cFile);

// psf recover: what the window kept. The list is one line each, the newest first: number, time, reason, origin and the
// members that differ from the file now, with tabs between them. The others take a number of that list; without one of
// that number they return the status NotFound.
int RecoverList(Session& session);
int RecoverJson(Session& session);
int RecoverShow(Session& session, std::uint64_t number); // prints a unified diff from the file now
int RecoverWrite(Session& session, std::uint64_t number, const std::string& output);
int RecoverDelete(Session& session, std::uint64_t number);

} // namespace tessaly::psf
