// Types into the pane of the program's window, which holds 10,000 lines, with all that the program does there. Prints
// for each keystroke how many lines change their colours, "one" or "all" in view, and the milliseconds until the pane
// is drawn. A comment is opened in front of all that is seen and closed again: no keystroke changes more colours.
#pragma once

#include "platform/desktop/Desktop.h"

#include <functional>
#include <string>

namespace tessaly::bench {

// What each system has its own way for.
struct Typist {
    // Puts the caret to the beginning of this line, counted from 0, and scrolls so that only lines behind it are seen.
    // False when that did not work.
    std::function<bool(int line)> putCaret;

    // Presses a key, '\b' for the one that takes back, and returns when the pane is drawn.
    std::function<void(char key)> type;

    // Returns when all that has changed is drawn.
    std::function<void()> draw;

    // Lets so many milliseconds pass, in which the program may do what it has left for later.
    std::function<void(int milliseconds)> rest;
};

// Fills the pane, types and prints. Throws when the keys did not do what they should.
void TypeKeystrokes(Desktop& desktop, const Typist& typist);

// Types into documents of 100 KB and of 10 MB that lie in `folder`, an existing one, with their copies beside them.
// Prints for each keystroke the bytes of the document, whether the program looked after its copies behind it ("with" or
// "without", in turns), and the milliseconds until the pane was drawn and that was done.
void TypeWithCopies(Desktop& desktop, const Typist& typist, const std::string& folder);

// Works in a document of 100,000 functions that lies in `folder`. Prints how many milliseconds it takes until the
// window is drawn after one is selected ("select"), and after OK was pressed in the window that asks for the name of a
// new one
// ("add"), and how long its copy takes that is written behind that ("copy").
void AddFunctions(Desktop& desktop, const Typist& typist, const std::string& folder);

} // namespace tessaly::bench
