// The commands of psf. Each returns its exit status and has said what went wrong.
#pragma once

#include "programs/psf/Session.h"

#include <cstdint>
#include <optional>
#include <string>

namespace tessaly::psf {

int New(Session& session, const std::string& file, bool force);
int ShowList(Session& session, const std::string& file);
int ShowMember(Session& session, const std::string& file, const std::string& member);
int ShowJson(Session& session, const std::string& file);
int Set(Session& session, const std::string& file, const std::string& member);
int Add(Session& session, const std::string& file, const std::string& name);
int Delete(Session& session, const std::string& file, const std::string& name);
int Resave(Session& session, const std::string& input, const std::string& output);

// Without `output` the C file goes to standard output.
int Generate(Session& session, const std::string& file, const std::optional<std::string>& output);

// psf check: what a load loses or changes without a word.
// Prints the warnings for `file`, one a line, as "FILE:LINE: warning: MEMBER: ...", in the order of the lines.
// Returns Success, WarningsFound, or the load's status. With `lint`, what each member's text shows by itself and what
// is wrong with the whole file's bytes is told, too; such a line ends with the name of its rule: " [open-comment]".
int Check(Session& session, const std::string& file, bool lint);

// psf build: the window's Build command. Unlike the window, it waits for the compiler.
// Generates the C file of `file` where the settings want it, runs the compiler's batch file and prints its output, with
// the positions mapped to members. In front stands what Lint finds and compilers hide. Returns the compiler's exit
// status, or that of what went wrong before: the load's, the generation's, CompilerMissing, WrongUsage.
int Build(Session& session, const std::string& file);

// psf map: copies standard input to standard output, line by line as it comes, with the positions in the C file of the
// last build of `file` led to members. That is `cFile`, or the one that the settings name. What it holds is compared
// with what `file` would give now, because `file` may have been edited since. Returns the load's status, or
// CompilerMissing without a C file.
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
