// What the last build has said, from the file in which its output comes to the rows of the messages window.
#pragma once

#include "app/Catalogue.h"
#include "diagnostics/Diagnostics.h"
#include "document/VornSrcObj.h"
#include "platform/desktop/Desktop.h"
#include "platform/system/PrivateFiles.h"
#include "ui/FindEverywhere.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace tessaly {

class BuildMessages {
public:
    // Both must outlive it. `files` removes the output of the build before.
    BuildMessages(Desktop& desktop, PrivateFiles& files);

    // How the window calls a member, in its language.
    std::function<std::string(const std::string& member)> onName;

    // Goes there. Called for messages that are in a member.
    std::function<void(const Diagnostic& message)> onGo;

    // Other messages are there than before, or none.
    std::function<void()> onChange;

    // The messages are gone, and the window with them.
    void Forget();

    // A build of `cFile` begins: what was there is forgotten, and the output of an earlier build removed.
    void Begin(const std::string& cFile);

    // The C file is written. The map is for it.
    BuildMap map;

    // The compiler has been started, for `document` as it is now. From here on its output is followed.
    void Listen(const VornSrcObj& document);

    // Lists these places, in the stead of the messages, which come back with others, or when there are no places.
    void ShowFound(FoundPlaces found);

    // How many places are listed at most.
    static constexpr std::size_t MostRows = 1000;

    // The text that a listed message is about, as it was then; good until another list comes.
    std::string_view TextOf(const std::string& member) const;

    // Goes on to the next message that leads somewhere, or back to the one before, round in a circle. The one that is
    // selected comes first if nobody has gone there. Brings the window back.
    void Step(bool backwards);

    // Whether there is something to go through; then the window can be brought back without going anywhere.
    bool HasSome() const { return mHasCome || HasFound(); }
    void ShowAgain();

    // The first one of the build in this member, and goes there. The messages come back with it.
    std::optional<std::size_t> FirstOf(const std::string& member) const;
    void GoToFirst(const std::string& member);

    // Shows what is there in this language.
    void SetLanguage(std::uint8_t language);

    // Those of the build.
    const std::vector<Diagnostic>& All() const { return mMessages; }

private:
    void Read();
    void Show();
    MessagesWindow& List();
    bool HasFound() const { return !mFound.places.empty(); }
    const std::vector<Diagnostic>& Listed() const { return HasFound() ? mFound.places : mMessages; }
    void Go(std::size_t row);
    MessageRow RowOf(const Diagnostic& message) const;
    std::string Words(OwnText text) const { return std::string(OwnWords(text, mLanguage)); }

    Desktop& mDesktop;
    MessagesWindow* mWindow = nullptr; // once there was something to show
    PrivateFiles& mFiles;
    std::uint8_t mLanguage = EnglishLanguage;
    std::string mPath;               // of the output; "" where nothing may be read
    std::string mOutput;             // as it was read last
    std::vector<Diagnostic> mHidden; // what the compiler does not say
    std::vector<Diagnostic> mMessages;
    std::size_t mLeftOut = 0; // of the messages
    FoundPlaces mFound;
    std::optional<std::size_t> mGone; // where somebody has gone last
    bool mHasCome = false;            // the window, in this build; who has hidden it since does not want it
};

} // namespace tessaly
