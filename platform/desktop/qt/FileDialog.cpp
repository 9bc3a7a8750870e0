// The chosen file need not exist. Nothing is asked about it and nothing added: that is the program's business.
#include "platform/desktop/qt/FileDialog.h"

#include "platform/desktop/qt/Text.h"

#include <QFileDialog>
#include <QStringList>
#include <algorithm>

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
    const QStringList before = dialog.selectedFiles();
    if (dialog.exec() == QDialog::Accepted && !dialog.selectedFiles().isEmpty()) {
        return FromQt(Chosen(dialog.selectedFiles(), before));
    }
    return std::nullopt;
}

} // namespace tessaly::qt
