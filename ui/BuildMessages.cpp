// All of this stands beside the commands: a failure in here changes nothing of what they do.
#include "ui/BuildMessages.h"

#include "platform/text/TerminalText.h"
#include "platform/text/Utf8.h"
#include "ui/Command.h"

#include <algorithm>
#include <string_view>
#include <utility>

namespace tessaly {

namespace {

// What a person may still look through. Without a limit a compiler that goes wild would stop the window.
constexpr std::size_t MostBytes = std::size_t{1024} * 1024;

// The beginning of a file: what comes first counts most. One byte more than is shown tells that there are more.
std::string ReadBeginning(SequentialFiles& files, const std::string& path) {
    const std::unique_ptr<InputFile> file = files.OpenForInput(path);
    std::string bytes(MostBytes + 1, '\0');
    std::size_t size = 0;
    while (const std::size_t count = size < bytes.size() ? file->Read(&bytes[size], bytes.size() - size) : 0) {
        size += count;
    }
    bytes.resize(size);
    return bytes;
}

// Each line by itself: a compiler writes in UTF-8, and quotes lines of the C file in its code page.
std::string Decoded(std::string_view bytes, const CodePage& codePage) {
    std::string text;
    while (!bytes.empty()) {
        const std::string_view line = bytes.substr(0, std::min(bytes.find('\n'), bytes.size() - 1) + 1);
        if (IsUtf8(line)) {
            text += line;
        } else {
            codePage.AppendDecoded(line, text);
        }
        bytes.remove_prefix(line.size());
    }
    return text;
}

// With LF between lines, as a lone CR begins one anew on a terminal.
std::string Printed(std::string_view text) {
    std::string printed = WithoutTerminalSequences(text);
    std::size_t end = 0;
    for (std::size_t at = 0; at < printed.size(); ++at) {
        const bool isCrOfCrLf = printed[at] == '\r' && at + 1 < printed.size() && printed[at + 1] == '\n';
        if (!isCrOfCrLf) {
            printed[end++] = printed[at] == '\r' ? '\n' : printed[at];
        }
    }
    printed.resize(end);
    return printed;
}

// Errors in front in the order they came, and notes under their message.
std::vector<Diagnostic> InOrder(std::vector<Diagnostic> messages) {
    std::vector<Diagnostic> errors;
    std::vector<Diagnostic> others;
    bool isOfError = false;
    for (Diagnostic& message : messages) {
        isOfError = message.kind == DiagnosticKind::Note ? isOfError : message.kind == DiagnosticKind::Error;
        (isOfError ? errors : others).push_back(std::move(message));
    }
    errors.insert(errors.end(), std::move_iterator(others.begin()), std::move_iterator(others.end()));
    return errors;
}

MessageKind KindOf(const Diagnostic& message) {
    switch (message.kind) {
    case DiagnosticKind::Error:
        return MessageKind::Error;
    case DiagnosticKind::Warning:
        return MessageKind::Warning;
    default:
        return MessageKind::Note;
    }
}

OwnText NameOf(MessageKind kind) {
    switch (kind) {
    case MessageKind::Error:
        return OwnText::ErrorMessage;
    case MessageKind::Warning:
        return OwnText::WarningMessage;
    default:
        return OwnText::NoteMessage;
    }
}

} // namespace

BuildMessages::BuildMessages(Desktop& desktop, PrivateFiles& files) : mDesktop(desktop), mFiles(files) {
    mDesktop.App().onFollowed = [this] { Read(); };
}

// Whatever of it fails, the rest is done: nothing old is to stay in view.
void BuildMessages::Forget() {
    mPath = "";
    mOutput = "";
    mHidden.clear();
    mMessages.clear();
    mLeftOut = 0;
    mFound = {};
    mGone.reset();
    mHasCome = false;
    map = {};
    Attempt([this] { mDesktop.App().Follow(""); });
    if (mWindow != nullptr) {
        Attempt([this] { mWindow->Hide(); });
        Attempt([this] { mWindow->SetRows({}); });
        Attempt([this] { mWindow->SetPrinted(""); });
    }
    Attempt([this] { onChange(); });
}

// Output that cannot be removed is another build's, so it is not looked at.
void BuildMessages::Begin(const std::string& cFile) {
    Forget();
    std::string path = mDesktop.App().OutputPath(cFile);
    if (!path.empty() && !mFiles.Remove(path)) {
        mPath = std::move(path);
    }
}

void BuildMessages::Listen(const VornSrcObj& document) {
    Attempt([&] { mHidden = HiddenDiagnostics(document); });
    Attempt([this] { Show(); });
    if (!mPath.empty()) {
        mDesktop.App().Follow(mPath);
        Read();
    }
}

void BuildMessages::Read() {
    if (mPath.empty()) {
        return;
    }
    std::string output = ReadBeginning(mDesktop.Files(), mPath);
    if (output != mOutput) {
        mOutput = std::move(output);
        if (HasFound()) {
            mFound = {};
            mGone.reset();
        }
        Show();
    }
}

void BuildMessages::Show() {
    const std::string_view shown = std::string_view(mOutput).substr(0, MostBytes);
    const std::string text = Decoded(shown, mDesktop.AnsiCodePage());
    mMessages = mHidden;
    const std::vector<Diagnostic> read = InOrder(ReadDiagnostics(map, text));
    mMessages.insert(mMessages.end(), read.begin(), read.end());
    mLeftOut = mMessages.size() - std::min(mMessages.size(), MostRows);
    mMessages.resize(mMessages.size() - mLeftOut);
    std::string printed = Printed(text);
    if (mOutput.size() > MostBytes) {
        printed.insert(0, Words(OwnText::BeginningOfOutput) + "\n" + mPath + "\n\n");
    }
    const bool isEmpty = mMessages.empty() && printed.find_first_not_of(" \t\n") == std::string::npos;
    if (!isEmpty || mWindow != nullptr) {
        MessagesWindow& window = List();
        window.SetPrinted(printed);
        if (!isEmpty && !std::exchange(mHasCome, true)) {
            window.Show();
        }
    }
    onChange();
}

// Makes the window when there is something to show: its controls would be a good part of each start.
MessagesWindow& BuildMessages::List() {
    if (mWindow == nullptr) {
        mWindow = &mDesktop.Messages();
        mWindow->onGo = [this](std::size_t row) { Go(row); };
    }
    const bool isFound = HasFound();
    std::vector<MessageRow> rows;
    for (const Diagnostic& message : Listed()) {
        rows.push_back(RowOf(message));
    }
    if (const std::size_t left = isFound ? mFound.count - mFound.places.size() : mLeftOut; left > 0) {
        const std::string words = Words(isFound ? OwnText::MorePlaces : OwnText::MoreMessages);
        rows.push_back({MessageKind::Note, {Words(OwnText::NoteMessage), "", "", std::to_string(left) + words}});
    }
    MessagesWindow& window = *mWindow;
    window.SetTexts(
        {Words(isFound ? OwnText::PlacesFound : OwnText::Messages),
         {Words(OwnText::KindHead), Words(OwnText::MemberHead), Words(OwnText::LineHead), Words(OwnText::TextHead)},
         Words(OwnText::MessagesPage),
         Words(OwnText::PrintedPage)});
    window.SetRows(std::move(rows));
    return window;
}

void BuildMessages::ShowFound(FoundPlaces found) {
    mFound = std::move(found);
    mGone.reset();
    if (HasFound()) {
        List().Show();
    } else if (mWindow != nullptr) {
        List();
        if (!mHasCome) {
            mWindow->Hide();
        }
    }
}

std::string_view BuildMessages::TextOf(const std::string& member) const {
    const auto found = mFound.texts.find(member);
    return found != mFound.texts.end() ? std::string_view(found->second) : map.Text(member);
}

MessageRow BuildMessages::RowOf(const Diagnostic& message) const {
    const MessageKind kind = KindOf(message);
    return {kind,
            {Words(HasFound() ? OwnText::PlaceFound : NameOf(kind)),
             message.member.empty() ? message.file : onName(message.member),
             message.line != 0 ? std::to_string(message.line) : "", message.text}};
}

void BuildMessages::Go(std::size_t row) {
    if (row >= Listed().size()) { // the one that counts the others
        return;
    }
    mGone = row;
    const Diagnostic message = Listed()[row];
    if (!message.member.empty()) {
        onGo(message);
    }
}

void BuildMessages::ShowAgain() {
    if (HasSome()) {
        mWindow->Show();
    }
}

std::optional<std::size_t> BuildMessages::FirstOf(const std::string& member) const {
    const auto found = std::find_if(mMessages.begin(), mMessages.end(), [&member](const Diagnostic& message) {
        return !member.empty() && message.member == member && message.kind != DiagnosticKind::Note;
    });
    return found != mMessages.end() ? std::optional(static_cast<std::size_t>(found - mMessages.begin())) : std::nullopt;
}

void BuildMessages::GoToFirst(const std::string& member) {
    if (const std::optional<std::size_t> row = FirstOf(member)) {
        if (HasFound()) {
            ShowFound({});
        }
        mWindow->Show();
        mWindow->Choose(*row);
        Go(*row);
    }
}

void BuildMessages::Step(bool backwards) {
    const std::size_t count = Listed().size();
    if (!HasSome()) {
        return;
    }
    mWindow->Show();
    const auto leads = [this](std::size_t row) {
        const Diagnostic& message = Listed()[row];
        return !message.member.empty() && (HasFound() || message.kind != DiagnosticKind::Note);
    };
    std::size_t row = std::min(mWindow->Selected().value_or(0), count);
    for (std::size_t steps = mGone == row ? 1 : 0; steps <= count; ++steps) {
        const std::size_t next = (backwards ? row + count * 2 - steps : row + steps) % std::max<std::size_t>(count, 1);
        if (next < count && leads(next)) {
            mWindow->Choose(next);
            Go(next);
            return;
        }
    }
}

void BuildMessages::SetLanguage(std::uint8_t language) {
    mLanguage = language;
    if (mHasCome) {
        Show();
    } else if (HasFound()) {
        List();
    }
}

} // namespace tessaly
