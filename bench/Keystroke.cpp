#include "bench/Keystroke.h"

#include "ui/VornMainFrm.h"

#include <array>
#include <chrono>
#include <cstdio>
#include <memory>
#include <stdexcept>
#include <string>
#include <utility>

namespace tessaly::bench {
namespace {

constexpr int Lines = 10000;
constexpr int Rounds = 30;
constexpr int Rest = 200; // milliseconds between two keys, as quick typists leave

std::string Program() {
    std::string text;
    for (int line = 0; line < Lines; ++line) {
        text +=
            "    total += samples[" + std::to_string(line) + "] * 0x1F; // step \"" + std::to_string(line) + "\"\r\n";
    }
    return text;
}

struct Key {
    char character;
    const char* changed;
};

// Opens a comment in front of everything that is seen, types in it and takes it away again.
constexpr std::array<Key, 6> Keys = {
    {{'/', "one"}, {'*', "all"}, {'a', "one"}, {'\b', "one"}, {'\b', "all"}, {'\b', "one"}}};

double Time(const std::function<void()>& work) {
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
}

} // namespace

void TypeKeystrokes(Desktop& desktop, const Typist& typist) {
    SystemPrivateFiles own;
    SystemFiles files;
    RecoveryHost host = SystemRecoveryHost(own, files, ProcessEnvironment);
    host.folders.clear(); // what copies cost is measured by itself
    VornMainFrm window(desktop, host);
    window.Show();
    window.CodeTree_NodeClick(desktop.CodeTree().Find(ReferencesKey));
    RichTextBox& pane = desktop.FuncBody();
    pane.SetExtent({4000, 900, 9000, 6500});
    pane.SetText(Program());
    typist.rest(Rest);
    if (!typist.putCaret(Lines / 2)) { // lines in front and behind it
        throw std::runtime_error("the caret is not in the first line in view");
    }
    typist.rest(Rest);
    int changes = 0;
    pane.onChange = [&changes, noted = pane.onChange] {
        ++changes;
        noted();
    };
    for (int round = 0; round < Rounds; ++round) {
        for (const Key& key : Keys) {
            // The whole way of a key: the text changes, its colours are made anew and it is drawn.
            std::printf("%s %.3f\n", key.changed, Time([&] { typist.type(key.character); }));
            typist.rest(Rest);
        }
    }
    if (changes != Rounds * static_cast<int>(Keys.size())) {
        throw std::runtime_error("the keys did not change the text");
    }
    window.FuncBodyChangedFlag = false;
}

namespace {

// A PSF file of `functions` functions of `size` bytes each.
void WriteDocument(Desktop& desktop, const std::string& path, int functions, std::size_t size) {
    VornSrcObj document(desktop.Files(), desktop.AnsiCodePage());
    for (int number = 0; number < functions; ++number) {
        const std::string name = "Function" + std::to_string(number);
        std::string text = "void " + name + "()\r\n{\r\n";
        while (text.size() < size) {
            text += "    total += samples[1] * 0x1F; // step\r\n";
        }
        document.AddFunction(name, "", text + "}");
    }
    if (document.SaveFile(path) != Status::Done) {
        throw std::runtime_error("the document cannot be written");
    }
}

} // namespace

void TypeWithCopies(Desktop& desktop, const Typist& typist, const std::string& folder) {
    constexpr int keys = 120;
    constexpr int keysInTurn = 20; // enough for a copy to have its rest behind it
    constexpr int functionsOfLarge = 1000;
    constexpr std::size_t functionSize = 10'000;
    SystemPrivateFiles own;
    SystemFiles files;
    RecoveryHost host = SystemRecoveryHost(own, files, ProcessEnvironment);
    host.folders = {folder + "/recovery"};
    VornMainFrm window(desktop, host);
    window.Show();
    const std::function<void()> idle = desktop.MainWindow().onIdle;
    desktop.MainWindow().onIdle = nullptr;
    for (const int functions : {functionsOfLarge / 100, functionsOfLarge}) {
        const std::string path = folder + "/" + std::to_string(functions) + ".PSF";
        WriteDocument(desktop, path, functions, functionSize);
        window.mnuOpenPSF_Click(path);
        window.CodeTree_NodeClick(desktop.CodeTree().Find("Function1"));
        desktop.FuncBody().SetFocus();
        typist.rest(Rest);
        for (int key = 0; key < keys; ++key) {
            const bool isWith = key / keysInTurn % 2 == 0;
            // In a line that grows out of view all that is seen moves at each key, which takes longer than all else.
            const double taken = Time([&] {
                typist.type(key % 2 == 0 ? 'a' : '\b');
                if (isWith) {
                    idle();
                }
            });
            std::printf("%d %s %.3f\n", functions * static_cast<int>(functionSize), isWith ? "with" : "without", taken);
            typist.rest(Rest / 2);
        }
        window.FuncBodyChangedFlag = false;
        if (RecoveryStore(host).Copies().size() != 1) {
            throw std::runtime_error("there is no copy");
        }
    }
}

namespace {

// The user has typed a name before and presses OK at once.
class AnsweredNameWindow final : public NameWindow {
public:
    explicit AnsweredNameWindow(std::string name) : mName(std::move(name)) {}
    void SetTexts(const NameTexts& /*texts*/) override {}
    void ShowModal() override { onOk(); }
    void Hide() override {}
    std::string FuncVarName() const override { return mName; }

private:
    std::string mName;
};

// Another desktop with such windows.
class AnsweredDesktop final : public Desktop {
public:
    explicit AnsweredDesktop(Desktop& shown) : mShown(shown) { mParts = shown.*&AnsweredDesktop::mParts; }
    MessagesWindow& Messages() override { return mShown.Messages(); }
    const BarControls& Bar() override { return mShown.Bar(); }
    std::unique_ptr<NameWindow> NewNameWindow() override {
        return std::make_unique<AnsweredNameWindow>("New" + std::to_string(++mNames));
    }
    std::unique_ptr<SplashWindow> NewSplashWindow() override { return mShown.NewSplashWindow(); }

private:
    Desktop& mShown;
    int mNames = 0;
};

} // namespace

void AddFunctions(Desktop& desktop, const Typist& typist, const std::string& folder) {
    constexpr int functions = 100'000;
    constexpr int rounds = 15;
    AnsweredDesktop answered(desktop);
    SystemPrivateFiles own;
    SystemFiles files;
    RecoveryHost host = SystemRecoveryHost(own, files, ProcessEnvironment);
    host.folders = {folder + "/recovery"};
    const std::string path = folder + "/long.PSF";
    WriteDocument(desktop, path, functions, 0);
    VornMainFrm window(answered, host);
    window.Show();
    const std::function<void()> idle = std::exchange(desktop.MainWindow().onIdle, nullptr);
    window.mnuOpenPSF_Click(path);
    TreeView& tree = desktop.CodeTree();
    tree.Expand(tree.Find(FunctionsKey));
    for (int round = 0; round < rounds; ++round) {
        typist.rest(Rest);
        const TreeItem item = tree.Find("Function" + std::to_string(functions / rounds * round));
        std::printf("select %.3f\n", Time([&] {
                        tree.Select(item);
                        window.CodeTree_NodeClick(item);
                        typist.draw();
                    }));
        typist.rest(Rest);
        std::printf("add %.3f\n", Time([&] {
                        window.Form_AddFunction();
                        typist.draw();
                    }));
        std::printf("copy %.3f\n", Time(idle));
    }
    if (window.mSourceDoc->GetFunctionCount() != functions + rounds) {
        throw std::runtime_error("the functions were not added");
    }
    window.FuncBodyChangedFlag = false;
}

} // namespace tessaly::bench
