// What belongs to the running program as a whole, in one object.
#pragma once

#include "platform/desktop/ApplicationVersion.h"
#include "platform/desktop/HelpFile.h"
#include "platform/system/CommandLine.h"
#include "platform/system/ProcessStart.h"

namespace tessaly {

class Application : public CommandLineSource, public ApplicationVersion, public HelpFile, public ProcessStart {};

} // namespace tessaly
