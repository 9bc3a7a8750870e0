// What belongs to the running program as a whole, in one object.
#pragma once

#include "platform/ApplicationVersion.h"
#include "platform/CommandLine.h"
#include "platform/HelpFile.h"
#include "platform/ProcessStart.h"

namespace tessaly {

class Application : public CommandLineSource, public ApplicationVersion, public HelpFile, public ProcessStart {};

} // namespace tessaly
