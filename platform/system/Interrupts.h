// The end of a program that its user interrupts, or that the system ends.
#pragma once

namespace tessaly {

// From now on a program that is interrupted removes the file that it is just writing for ReplaceWhole and ends the
// processes that it waits for, with all that these started. Then it ends as it would without this.
// Unix: interrupted by INT, TERM and HUP, as far as they are not ignored. Windows: what it waits for ends in any case;
// the file is removed by the next ReplaceWhole in its folder.
void EndCleanlyWhenInterrupted();

} // namespace tessaly
