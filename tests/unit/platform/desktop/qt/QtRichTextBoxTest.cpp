// What Qt's editor would do to a text if it were left to.
#include "platform/text/Utf8.h"
#include "tests/contract/ShortOfMemory.h"
#include "tests/contract/qt/QtDriver.h"

#include <QAccessible>
#include <QClipboard>
#include <QGuiApplication>
#include <QInputMethodEvent>
#include <QMimeData>
#include <QTextBlock>
#include <QTextLayout>
#include <algorithm>
#include <gtest/gtest.h>
#include <memory>
#include <new>

namespace tessaly {
namespace {

class QtRichTextBoxTest : public testing::Test {
protected:
    RichTextBox& Pane() { return user.Qt().pane; }
    qt::PlainTextEdit& Editor() { return user.Qt().pane.Widget(); }

    void Edit(std::string_view text, std::size_t caret) {
        user.Qt().window.Show();
        Pane().SetText(text);
        user.ClickPane();
        user.SetCaret(caret);
    }

    // The colours of a line, as "start+length" in the order of the line.
    std::string Colours(int line) {
        Editor().grab(); // draws it
        std::string text;
        for (const QTextLayout::FormatRange& range : Editor().document()->findBlockByNumber(line).layout()->formats()) {
            text += std::to_string(range.start) + "+" + std::to_string(range.length) + " ";
        }
        return text;
    }

    QColor FirstColour(int line) {
        Editor().grab();
        const auto formats = Editor().document()->findBlockByNumber(line).layout()->formats();
        return formats.isEmpty() ? QColor() : formats.constFirst().format.foreground().color();
    }

    QtDriver user{Launch{}};
};

// Each stretch of the text that a screen reader is told something of beyond its font: "0-1 invalid:grammar".
std::vector<std::string> Told(QWidget& editor) {
    const QAccessibleTextInterface& text = *QAccessible::queryAccessibleInterface(&editor)->textInterface();
    std::vector<std::string> told;
    for (int start = 0, end = 0; end < text.characterCount();) {
        for (const QString& attribute : text.attributes(end, &start, &end).split(u';')) {
            if (attribute.startsWith(u"background-color:") || attribute.startsWith(u"invalid:")) {
                told.push_back(std::to_string(start) + "-" + std::to_string(end) + " " + attribute.toStdString());
            }
        }
    }
    return told;
}

TEST_F(QtRichTextBoxTest, NoCharacterIsDrawnBelowTheScrollBars) {
    Edit(std::string(1000, 'a') + QString(QStringLiteral("\na")).repeated(100).toStdString(), 0);
    user.Settle();
    const QRect view = Editor().viewport()->rect();
    const auto& pane = user.Qt().pane;
    EXPECT_TRUE(pane.PlaceUnder({view.right() - 3, 5}));
    EXPECT_EQ(pane.PlaceUnder({view.right() + 3, 5}), std::nullopt);
    EXPECT_EQ(pane.PlaceUnder({1, view.bottom() + 3}), std::nullopt);
}

TEST_F(QtRichTextBoxTest, WhatAnInputMethodComposesIsTextOnceItIsDone) {
    Edit("a\nb", 1);
    int changes = 0;
    Pane().onChange = [&changes] { ++changes; };
    const auto compose = [this](const QString& shown, const QString& done) {
        QInputMethodEvent event(shown, {});
        event.setCommitString(done);
        QCoreApplication::sendEvent(&Editor(), &event);
        user.Settle();
    };
    const QString smile = QString::fromUtf8("\xF0\x9F\x98\x80");
    compose(smile, {});
    compose(smile + smile, {});
    compose({}, {});
    EXPECT_EQ(Pane().Text(), "a\nb");
    EXPECT_FALSE(Pane().CanUndo());
    EXPECT_EQ(changes, 0);
    for (int times = 0; times < 2; ++times) {
        compose(smile, {});
        compose({}, smile);
    }
    EXPECT_EQ(Pane().Text(), "a" + smile.toStdString() + smile.toStdString() + "\nb");
    EXPECT_EQ(changes, 2);
    user.Undo();
    EXPECT_EQ(Pane().Text(), "a\nb");
    EXPECT_FALSE(Pane().CanUndo());
    user.SelectAll();
    compose({}, QStringLiteral("c"));
    EXPECT_EQ(Pane().Text(), "c");
    while (Pane().CanUndo()) {
        user.Undo();
    }
    EXPECT_EQ(Pane().Text(), "a\nb");
}

TEST_F(QtRichTextBoxTest, AScreenReaderIsToldWhatIsMarkedInTheText) {
    Pane().keeps = [](char32_t character) { return character != 0x3B1; };
    Edit("(ab)\nc\xCE\xB1 d\n(x\nef", 0);
    const std::string blue = " background-color:rgb(47,123,234)";
    const std::string red = " background-color:rgb(224,43,38)";
    const std::string amber = " background-color:rgb(242,169,0)";
    EXPECT_EQ(Told(Editor()),
              (std::vector<std::string>{"0-1" + blue, "3-4" + blue, "6-7" + red, "6-7 invalid:spelling"}));
    Pane().SetMatches({{{1, 2}, 2}});
    Pane().SetLineMarks(std::vector<LineMark>{{1, Mark::Error, 1, 3}, {4, Mark::Warning, 13, 14}});
    Pane().MoveCaret(10);
    EXPECT_EQ(Told(Editor()),
              (std::vector<std::string>{"1-3 invalid:grammar", "6-7" + red, "6-7 invalid:spelling", "7-9" + amber,
                                        "10-11" + red, "10-11 invalid:grammar", "13-14 invalid:grammar"}));
    Pane().SetFuncBodyAvailable(false);
    EXPECT_EQ(Told(Editor()), std::vector<std::string>());
}

TEST_F(QtRichTextBoxTest, EveryCharacterComesBack) {
    std::string text;
    for (char32_t character = 0; character <= 0x10FFFF; ++character) {
        const bool isSurrogate = character >= 0xD800 && character <= 0xDFFF;
        if (!isSurrogate && character != '\r' && character != '\n') {
            AppendUtf8(character, text);
            text += character % 64 == 0 ? "\r" : "";
        }
    }
    Pane().SetText(text);
    const std::string back = Pane().Text();
    const auto difference = std::mismatch(text.begin(), text.end(), back.begin(), back.end());
    EXPECT_EQ(difference.first - text.begin(), static_cast<std::ptrdiff_t>(text.size())) << "the first that does not";
    EXPECT_EQ(back.size(), text.size());
}

TEST_F(QtRichTextBoxTest, CharactersThatQtTakesForParagraphsSurviveAnEdit) {
    const std::string odd = "\xE2\x80\xA8\xE2\x80\xA9\xEF\xB7\x90\xEF\xB7\x91\xEF\xB7\x92\xF0\x9F\x98\x80\xC2\xA0\x0C"
                            "\x0B\x7F\xE2\x90\x80\xE2\x90\xA1";
    Edit("a\n" + odd + "\rb", 0);
    user.Type("x");
    EXPECT_EQ(Pane().Text(), "xa\n" + odd + "\rb");
    user.Undo();
    EXPECT_EQ(Pane().Text(), "a\n" + odd + "\rb");
}

TEST_F(QtRichTextBoxTest, ShiftAndEnterMakeALineBreak) {
    Edit("ab", 1);
    user.PressKey(13, 1);
    EXPECT_EQ(Pane().Text(), "a\r\nb");
}

TEST_F(QtRichTextBoxTest, WhatIsCopiedIsWhatStandsThere) {
    Edit("a\xC2\xA0\tb\rc", 0);
    user.SelectAll();
    Editor().copy();
    EXPECT_EQ(qt::FromQt(QGuiApplication::clipboard()->text()), "a\xC2\xA0\tb\nc");
    EXPECT_FALSE(QGuiApplication::clipboard()->mimeData()->hasHtml());
}

TEST_F(QtRichTextBoxTest, OnlyThePlainTextOfWhatIsPastedCounts) {
    Edit("", 0);
    auto data = std::make_unique<QMimeData>();
    data->setHtml("<b>bold</b><br>x");
    data->setText(QString::fromUtf8("p\xE2\x80\xA9q\xE2\x80\xA8r\xC2\xA0s") + QChar(0xD800));
    QGuiApplication::clipboard()->setMimeData(data.release()); // the clipboard's own now
    user.PressKey('V', 2);
    EXPECT_EQ(Pane().Text(), "p\r\nq\r\nr\xC2\xA0s?");
}

TEST_F(QtRichTextBoxTest, EveryEditCanBeUndoneAndDoneAgain) {
    Edit("one\ntwo\nthree", 4);
    user.SelectAll();
    user.Paste("new\ntext");
    user.PressEnter();
    user.Type("end");
    const std::string after = Pane().Text();
    for (int step = 0; step < 10; ++step) {
        user.Undo();
    }
    EXPECT_EQ(user.PaneShown(), "one\ntwo\nthree");
    for (int step = 0; step < 10; ++step) {
        user.PressKey('Z', 3);
    }
    EXPECT_EQ(Pane().Text(), after);
}

TEST_F(QtRichTextBoxTest, ANewBreakAmongOthersIsTheLastOfThem) {
    Edit("a\n\r\rb", 1);
    user.PressEnter();
    EXPECT_EQ(Pane().Text(), "a\n\r\r\r\nb");
    user.SetCaret(2);
    user.Backspace();
    EXPECT_EQ(Pane().Text(), "a\n\r\rb");
}

TEST_F(QtRichTextBoxTest, WhatIsReplacedByTheSameTextHasNewBreaks) {
    Edit("a\nb\rc", 0);
    user.SelectAll();
    user.Paste("a\nb\nc");
    EXPECT_EQ(Pane().Text(), "a\r\nb\r\nc");
}

TEST_F(QtRichTextBoxTest, CodeIsColouredWhereItIsSeen) {
    Edit("int x = 1; /* a\nb */ y\n\"s\"", 0);
    EXPECT_EQ(Colours(0), "0+3 8+1 11+4 ");
    EXPECT_EQ(Colours(1), "0+4 ");
    EXPECT_EQ(Colours(2), "0+3 ");
}

TEST_F(QtRichTextBoxTest, AnOpenCommentColoursTheLinesBelowAndAClosedOneNoMore) {
    Edit("x\nint a;\nint b;", 0);
    EXPECT_EQ(Colours(2), "0+3 ");
    user.Type("/*");
    EXPECT_EQ(Colours(2), "0+6 ");
    user.Undo();
    EXPECT_EQ(Colours(2), "0+3 ");
}

TEST_F(QtRichTextBoxTest, ColouringTellsOfNoChangeAndTakesNoUndoAway) {
    Edit("a", 1);
    user.Type(" int");
    int changes = 0;
    Pane().onChange = [&changes] { ++changes; };
    Colours(0);
    user.Settle();
    EXPECT_EQ(changes, 0);
    user.Undo();
    EXPECT_EQ(changes, 1);
    EXPECT_EQ(Pane().Text(), "a");
}

TEST_F(QtRichTextBoxTest, ADarkThemeHasLightColours) {
    Edit("int", 0);
    const QColor onLight = FirstColour(0);
    const QPalette before = QGuiApplication::palette();
    QPalette dark = before;
    dark.setColor(QPalette::Base, Qt::black);
    dark.setColor(QPalette::Text, Qt::white);
    Editor().setPalette(dark);
    const QColor onDark = FirstColour(0);
    EXPECT_EQ(onLight, QColor(0x00, 0x60, 0x80)) << "the colour of types on every desktop";
    EXPECT_LT(onLight.lightness(), 128);
    EXPECT_GT(onDark.lightness(), 128);
}

TEST_F(QtRichTextBoxTest, AnUnavailablePaneIsGrey) {
    Edit("", 0);
    const QColor usual = Editor().viewport()->palette().color(QPalette::Base);
    Pane().SetFuncBodyAvailable(false);
    EXPECT_NE(Editor().viewport()->palette().color(QPalette::Base), usual);
    Pane().SetFuncBodyAvailable(true);
    EXPECT_EQ(Editor().viewport()->palette().color(QPalette::Base), usual);
}

TEST_F(QtRichTextBoxTest, EveryCharacterIsAsWideAsThePaneSays) {
    Edit("iiiiWWWWx", 0);
    Editor().grab();
    const QTextLine line = Editor().document()->firstBlock().layout()->lineAt(0);
    EXPECT_NEAR((line.cursorToX(8) - line.cursorToX(0)) * qt::TwipsInPixel, 8 * Pane().CharacterWidth(), 1);
}

TEST_F(QtRichTextBoxTest, TheTabKeyGoesToTheStopsThatWereSet) {
    Edit("\t\t\tx", 0);
    Pane().SetTabStops({0, 600, 1200});
    Editor().grab();
    const QTextLine line = Editor().document()->firstBlock().layout()->lineAt(0);
    const double start = line.cursorToX(0);
    EXPECT_DOUBLE_EQ(line.cursorToX(1) - start, 40);
    EXPECT_DOUBLE_EQ(line.cursorToX(2) - start, 80);
    EXPECT_DOUBLE_EQ(line.cursorToX(3) - start, 120) << "on as before behind the last stop";
}

// Qt cannot be asked for the memory that is left, and ends the program where it runs out of it.
TEST_F(QtRichTextBoxTest, HoweverMuchMemoryIsLeftATextIsShownWholeOrNotAtAll) {
    if (!ShortOfMemory::IsPossible) {
        GTEST_SKIP();
    }
    std::string shortLines;
    while (shortLines.size() < 1U << 19U) {
        shortLines += "a;\n";
    }
    const std::string longLine(1U << 20U, 'x');
    Edit(std::string(30, '\n'), 0);
    Editor().grab();                                         // keeps some memory for good when it paints all the digits
    for (const std::string& text : {longLine, shortLines}) { // the last leaves its memory in many pieces
        bool isRefused = false;
        bool isShown = false;
        for (std::size_t room = 1U << 20U; room <= 1U << 30U; room += room / 2) {
            Edit("a\rb", 1);
            user.Type("x");
            const ShortOfMemory rest(room);
            try {
                Pane().SetText(text);
                Editor().grab();
                isShown = Pane().Text() == text;
                EXPECT_TRUE(isShown) << room;
            } catch (const std::bad_alloc&) {
                isRefused = true;
                EXPECT_EQ(Pane().Text(), "ax\rb") << room;
            }
            if (isShown) {
                break;
            }
        }
        EXPECT_TRUE(isRefused);
        EXPECT_TRUE(isShown);
    }
}

} // namespace
} // namespace tessaly
