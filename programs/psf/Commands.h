// The commands of psf but for check and build. Each returns its exit status and has said what went wrong.
#pragma once

#include "programs/psf/Session.h"

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

} // namespace tessaly::psf
