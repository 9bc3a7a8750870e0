// What Qt itself says is in the language of the program, whatever the system's is.
#include "platform/desktop/qt/Texts.h"
#include "tests/contract/qt/QtDriver.h"

#include <QAbstractItemModel>
#include <QAction>
#include <QCoreApplication>
#include <QFileDialog>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QPushButton>
#include <gtest/gtest.h>
#include <memory>
#include <set>

namespace tessaly {
namespace {

// The same in both languages.
const std::set<QString> SameInBoth = {"OK", "&OK", "Name"};

// All that can be read in a window or a menu.
QStringList TextsOf(const QWidget& window) {
    QStringList texts;
    for (const QAction* const action : window.findChildren<QAction*>() + window.actions()) {
        texts << action->text().split(u'\t') << action->toolTip()
              << action->shortcut().toString(QKeySequence::NativeText);
    }
    for (const QLabel* const label : window.findChildren<QLabel*>()) {
        texts << label->text();
    }
    for (const QAbstractButton* const button : window.findChildren<QAbstractButton*>()) {
        texts << button->text() << button->toolTip() << button->accessibleName() << button->accessibleDescription();
    }
    for (const QHeaderView* const header : window.findChildren<QHeaderView*>()) {
        for (int column = 0; header->model() != nullptr && column < header->count(); ++column) {
            texts << header->model()->headerData(column, Qt::Horizontal).toString();
        }
    }
    return texts;
}

QStringList TextsOfDialogs() {
    QMessageBox box;
    box.setStandardButtons(QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel | QMessageBox::Ok);
    QStringList texts = TextsOf(box);
    for (const QFileDialog::AcceptMode mode : {QFileDialog::AcceptOpen, QFileDialog::AcceptSave}) {
        QFileDialog dialog;
        dialog.setOption(QFileDialog::DontUseNativeDialog);
        dialog.setAcceptMode(mode);
        texts += TextsOf(dialog);
    }
    QPlainTextEdit pane(QStringLiteral("text"));
    texts += TextsOf(*std::unique_ptr<QMenu>(pane.createStandardContextMenu()));
    QLineEdit name(QStringLiteral("text"));
    texts += TextsOf(*std::unique_ptr<QMenu>(name.createStandardContextMenu()));
    return texts;
}

bool HasWord(const QString& text) {
    int letters = 0;
    for (const QChar character : text) {
        letters += character.isLetter() ? 1 : 0;
    }
    return letters > 1;
}

TEST(QtTextsTest, QtSpeaksTheLanguageOfTheProgram) {
    std::string_view language = "en";
    qt::Texts texts([&language] { return language; });
    const QStringList withoutIt = TextsOfDialogs();
    QCoreApplication::installTranslator(&texts);
    const QStringList english = TextsOfDialogs();
    language = "de";
    const QStringList german = TextsOfDialogs();
    EXPECT_EQ(english, withoutIt);
    ASSERT_EQ(german.size(), english.size());
    EXPECT_GT(std::set<QString>(german.begin(), german.end()).size(), 30U);
    for (qsizetype i = 0; i < english.size(); ++i) {
        if (HasWord(english[i]) && !SameInBoth.contains(english[i])) {
            EXPECT_NE(german[i], english[i]) << qt::FromQt(english[i]);
        }
    }
    EXPECT_TRUE(german.contains(QStringLiteral("&Ja")));
    EXPECT_TRUE(german.contains(QStringLiteral("Alles auswählen")));
}

} // namespace
} // namespace tessaly
