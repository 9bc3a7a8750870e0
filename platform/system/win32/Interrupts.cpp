// Nothing to do: jobs end what is waited for, and the file that is being written cannot be deleted from outside, so it
// is left for the next call of ReplaceWhole in its folder.
#include "platform/system/Interrupts.h"

namespace tessaly {

void EndCleanlyWhenInterrupted() {}

} // namespace tessaly
