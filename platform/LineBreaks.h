// Keeps the line breaks of a text while a control that knows only one kind of break shows it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace tessaly {

class LineBreaks {
public:
    // Takes a new text with any breaks: CR LF, a lone LF, a lone CR.
    void Set(std::string_view text);

    // The text for the control, every break a single LF.
    const std::string& Shown() const { return mShown; }

    // Tells that the control now shows `shown`, with breaks as single LFs. To be called after every change by the
    // user. What stands at the front and at the end as before keeps its breaks; every break between is CR LF. Where a
    // break is added or removed right beside another one the texts do not tell which of the two it was, and the one in
    // front counts as the old one.
    void Edit(std::string_view shown);

    // The text with its breaks: exactly what was set, if nothing was edited.
    std::string Text() const;

private:
    enum class Break : std::uint8_t { CrLf, Lf, Cr };

    std::string mShown;
    std::vector<Break> mBreaks; // one for each LF in mShown
};

} // namespace tessaly
