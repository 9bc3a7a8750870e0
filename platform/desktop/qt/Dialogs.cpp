// The chosen file need not exist. Nothing is asked about it and nothing added: that is the program's business. Of a
// Yes/No box Qt would take the Escape key for a No; here it has to be answered.
#include "platform/desktop/qt/Dialogs.h"

#include "platform/desktop/qt/Text.h"

#include <QApplication>
#include <QCloseEvent>
#include <QFileDialog>
#include <QGridLayout>
#include <QKeyEvent>
#include <QMessageBox>
#include <QStringList>
#include <algorithm>
#include <memory>

namespace tessaly::qt {

namespace {

// Qt wants the pattern in parentheses at the end. It is hidden there, for a description often tells it.
QStringList NameFilters(const std::string& filter) {
    const QStringList parts = ToQt(filter).split(u'|');
    QStringList filters;
    for (qsizetype i = 0; i + 1 < parts.size(); i += 2) {
        filters.append(parts[i] + QStringLiteral(" (") + parts[i + 1] + u')');
    }
    return filters;
}

// The file that the dialog began with can stay selected beside a pasted path.
QString Chosen(const QStringList& selected, const QStringList& before) {
    const auto other = std::find_if(selected.begin(), selected.end(),
                                    [&before](const QString& path) { return !before.contains(path); });
    return other != selected.end() ? *other : selected.constFirst();
}

} // namespace

// There is no read-only check box here to hide.
std::optional<std::string> FileDialog::Ask(Kind kind, const FileDialogSettings& settings) {
    QFileDialog dialog(&mWindow);
    dialog.setAcceptMode(kind == Kind::Open ? QFileDialog::AcceptOpen : QFileDialog::AcceptSave);
    if (!settings.title.empty()) {
        dialog.setWindowTitle(ToQt(settings.title));
    }
    dialog.setFileMode(QFileDialog::AnyFile);
    dialog.setOptions(QFileDialog::DontConfirmOverwrite | QFileDialog::HideNameFilterDetails);
    const QStringList filters = NameFilters(settings.filter);
    if (!filters.isEmpty()) {
        dialog.setNameFilters(filters);
        dialog.selectNameFilter(filters[std::clamp<qsizetype>(settings.filterIndex, 1, filters.size()) - 1]);
    }
    if (!settings.fileName.empty()) {
        dialog.selectFile(ToQt(settings.fileName));
    }
    dialog.resize(SizeOnScreen(dialog, dialog.size()));
    const QStringList before = dialog.selectedFiles();
    if (dialog.exec() == QDialog::Accepted && !dialog.selectedFiles().isEmpty()) {
        return FromQt(Chosen(dialog.selectedFiles(), before));
    }
    return std::nullopt;
}

namespace {

class Box final : public QMessageBox {
public:
    Box(QWidget* parent, bool canBeClosed) : QMessageBox(parent), mCanBeClosed(canBeClosed) {
        if (!canBeClosed) {
            setWindowFlags(Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint);
        }
    }

protected:
    void closeEvent(QCloseEvent* event) override {
        if (mCanBeClosed) {
            QMessageBox::closeEvent(event);
        } else {
            event->ignore();
        }
    }

    void keyPressEvent(QKeyEvent* event) override {
        if (mCanBeClosed || event->key() != Qt::Key_Escape) {
            QMessageBox::keyPressEvent(event);
        }
    }

private:
    bool mCanBeClosed;
};

QMessageBox::StandardButtons ButtonsOf(MsgButtons buttons) {
    return buttons == MsgButtons::Ok      ? QMessageBox::Ok
           : buttons == MsgButtons::YesNo ? QMessageBox::Yes | QMessageBox::No
                                          : QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel;
}

QMessageBox::Icon IconOf(MsgIcon icon) {
    switch (icon) {
    case MsgIcon::Stop:
        return QMessageBox::Critical;
    case MsgIcon::Question:
        return QMessageBox::Question;
    case MsgIcon::Exclamation:
        return QMessageBox::Warning;
    case MsgIcon::Information:
        return QMessageBox::Information;
    case MsgIcon::None:
        break;
    }
    return QMessageBox::NoIcon;
}

int WidthForCaption(const QMessageBox& box) {
    QFont bold = box.font();
    bold.setBold(true);
    return QFontMetrics(bold).horizontalAdvance(box.windowTitle()) + AroundCaption;
}

// Qt wraps the lines of a wider text; columns would be columns no more.
void Widen(QMessageBox& box) {
    const int columns = box.text().contains(u'\t') ? box.layout()->sizeHint().width() : 0;
    auto& grid = dynamic_cast<QGridLayout&>(*box.layout());
    auto strut = std::make_unique<QSpacerItem>(std::max(WidthForCaption(box), columns), 0);
    grid.addItem(strut.release(), grid.rowCount(), 0, 1, grid.columnCount()); // the layout's own from here on
}

} // namespace

MsgResult MsgBox::Ask(std::string_view text, std::string_view caption, MsgButtons buttons, MsgIcon icon) {
    QWidget* const onTop = QApplication::activeModalWidget();
    Box box(onTop != nullptr ? onTop : &mWindow, buttons != MsgButtons::YesNo);
    box.setWindowTitle(ToQt(caption));
    box.setTextFormat(Qt::PlainText);
    box.setText(ToQt(text));
    box.setIcon(IconOf(icon));
    box.setStandardButtons(ButtonsOf(buttons));
    box.setDefaultButton(buttons == MsgButtons::Ok ? QMessageBox::Ok : QMessageBox::Yes);
    Widen(box);
    switch (box.exec()) {
    case QMessageBox::Yes:
        return MsgResult::Yes;
    case QMessageBox::No:
        return MsgResult::No;
    default:
        return AnswerOfNobody(buttons);
    }
}

} // namespace tessaly::qt
