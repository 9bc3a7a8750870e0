// What a screen reader is told of the pane's text. Qt tells text, caret and selection; what is only drawn is told here,
// as attributes of the text.
#pragma once

namespace tessaly::qt {

// Of all panes that are there and will be. To be called once at least.
void SpeakMarks();

} // namespace tessaly::qt
