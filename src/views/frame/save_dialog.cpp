// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/frame/save_dialog.h"

#include "views/frame/open_filter.h"
#include "views/text/ui_text.h"

#include <QFileInfo>
#include <QHeaderView>
#include <QLineEdit>
#include <QSplitter>
#include <QTreeView>

#include <algorithm>
#include <array>

namespace tessaro {
namespace {

constexpr std::array<std::uint8_t, 6> kinds{4, 5, 1, 2, 3, 6};
constexpr int nativeRows = 2;

QString extensionOfRow(int row) { return row < nativeRows ? QStringLiteral("TQM") : QStringLiteral("MID"); }

} // namespace

std::uint8_t kindOfRow(int row)
{
    return row >= 0 && row < static_cast<int>(kinds.size()) ? kinds[static_cast<std::size_t>(row)] : kinds[0];
}

int rowOfKind(std::uint8_t kind)
{
    const auto found = std::find(kinds.begin(), kinds.end(), kind);
    return found == kinds.end() ? 0 : static_cast<int>(found - kinds.begin());
}

QString withExtensionOfRow(const QString& name, int row)
{
    const qsizetype file = name.lastIndexOf(QLatin1Char('/')) + 1;
    if (file == name.size()) return name;
    const qsizetype point = name.lastIndexOf(QLatin1Char('.'));
    return (point < file ? name : name.left(point)) + QLatin1Char('.') + extensionOfRow(row);
}

SaveDialog::SaveDialog(const SaveChoice& proposed, const QString& folder, const UiText& text, QWidget* parent)
    : QFileDialog(parent, text.plain(TextId::commandSaveAs))
{
    setOption(DontUseNativeDialog);
    setAcceptMode(AcceptSave);
    setFileMode(AnyFile);
    setNameFilters(openFilters(text(TextId::saveFilter)));
    const int first = rowOfKind(proposed.kind);
    selectNameFilter(nameFilters().value(first));
    setDefaultSuffix(extensionOfRow(first));
    const QFileInfo file(QString::fromStdString(proposed.path));
    setDirectory(proposed.path.empty() ? folder : file.absolutePath());
    selectFile(proposed.path.empty() ? withExtensionOfRow(text(TextId::songUntitled), first) : file.fileName());
    connect(this, &QFileDialog::filterSelected, this, [this] { rowChosen(); });
    makeRoom();
}

/// The toolkit's own columns cut off names of places, and times.
void SaveDialog::makeRoom()
{
    resize(800, 500);
    if (auto* splitter = findChild<QSplitter*>(QStringLiteral("splitter"))) splitter->setSizes({160, 640});
    if (const auto* files = findChild<QTreeView*>(QStringLiteral("treeView"))) {
        files->header()->setSectionResizeMode(QHeaderView::ResizeToContents);
        files->header()->setSectionResizeMode(0, QHeaderView::Stretch);
    }
}

int SaveDialog::row() const { return static_cast<int>(nameFilters().indexOf(selectedNameFilter())); }

SaveChoice SaveDialog::choice() const { return {selectedFiles().value(0).toStdString(), kindOfRow(row())}; }

void SaveDialog::rowChosen()
{
    setDefaultSuffix(extensionOfRow(row()));
    auto* name = findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
    if (name) name->setText(withExtensionOfRow(name->text(), row()));
}

} // namespace tessaro
