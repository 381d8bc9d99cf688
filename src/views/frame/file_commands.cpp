// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/frame/file_commands.h"

#include "core/doc/recovery.h"
#include "core/doc/tr9app.h"
#include "core/doc/tr9doc.h"
#include "views/frame/open_filter.h"
#include "views/frame/save_dialog.h"
#include "views/frame/window_user.h"
#include "views/text/ui_text.h"

#include <QFileInfo>
#include <QMenu>
#include <QStandardPaths>

namespace tessaro {

bool FileCommands::leaveSong()
{
    if (isBusy()) return false;
    onBefore();
    return m_parts.document.SaveModified();
}

void FileCommands::newSong()
{
    if (leaveSong()) m_parts.app.OnFileNew();
}

bool FileCommands::open(const QString& path)
{
    if (!leaveSong()) return false;
    const bool opened = m_parts.app.OnFileOpen(QFileInfo(path).absoluteFilePath().toStdString());
    onOpened();
    return opened;
}

void FileCommands::askAndOpen()
{
    if (isBusy()) return;
    QFileDialog dialog(&m_window, m_parts.text.plain(TextId::commandOpen));
    dialog.setFileMode(QFileDialog::ExistingFile);
    dialog.setNameFilters(openFilters(m_parts.text(TextId::openFilter)));
    const std::string& current = m_parts.document.GetPathName();
    dialog.setDirectory(current.empty() ? usualFolder() : QFileInfo(QString::fromStdString(current)).absolutePath());
    if (dialog.exec() == QDialog::Accepted) open(dialog.selectedFiles().constFirst());
}

void FileCommands::openRecent(std::size_t index)
{
    const QString path = QString::fromStdString(m_parts.app.GetRecentFiles().paths()[index]);
    if (isBusy() || (QFileInfo::exists(path) && !leaveSong())) return;
    m_parts.app.OnFileRecent(index);
    onOpened();
}

bool FileCommands::recover(RecoveryList& songs, std::size_t index)
{
    if (!leaveSong() || !m_parts.document.Recover(songs.songs()[index])) return false;
    songs.opened(index);
    onOpened();
    return true;
}

bool FileCommands::save()
{
    if (isBusy()) return false;
    onBefore();
    return tellSaved(m_parts.document.Save());
}

bool FileCommands::saveAs()
{
    if (isBusy()) return false;
    onBefore();
    return tellSaved(m_parts.document.SaveAs());
}

void FileCommands::exportMidi()
{
    constexpr std::uint8_t format1 = 2;
    if (isBusy()) return;
    onBefore();
    const QFileInfo own(QString::fromStdString(m_parts.document.GetPathName()));
    const bool unnamed = own.fileName().isEmpty();
    QFileDialog dialog(&m_window, m_parts.text.plain(TextId::commandExportMidi));
    dialog.setOption(QFileDialog::DontUseNativeDialog);
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setNameFilters({m_parts.text(TextId::exportFilter)});
    dialog.setDefaultSuffix(QStringLiteral("MID"));
    dialog.setDirectory(unnamed ? usualFolder() : own.absolutePath());
    dialog.selectFile((unnamed ? m_parts.text(TextId::songUntitled) : own.completeBaseName()) + QStringLiteral(".MID"));
    if (dialog.exec() != QDialog::Accepted) return;
    const QString path = dialog.selectedFiles().constFirst();
    if (m_parts.document.SaveCopy(path.toStdString(), format1)) onExported(path);
}

bool FileCommands::tellSaved(bool saved)
{
    if (saved) onSaved(QString::fromStdString(m_parts.document.GetPathName()));
    return saved;
}

std::optional<SaveChoice> FileCommands::askSaveName(const SaveChoice& proposed)
{
    SaveDialog dialog(proposed, usualFolder(), m_parts.text, &m_window);
    if (dialog.exec() != QDialog::Accepted) return std::nullopt;
    return dialog.choice();
}

SaveAnswer FileCommands::askSaveChanges(std::string_view name)
{
    return m_parts.user.saveBox(m_parts.text(TextId::askSaveChanges).arg(utf8Text(name)));
}

QString FileCommands::usualFolder() const
{
    const std::vector<std::string>& recent = m_parts.app.GetRecentFiles().paths();
    if (!recent.empty()) {
        const QFileInfo last(QString::fromStdString(recent.front()));
        if (last.dir().exists()) return last.absolutePath();
    }
    return QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
}

void FileCommands::fillRecentMenu(QMenu& menu)
{
    menu.clear();
    const std::vector<std::string>& paths = m_parts.app.GetRecentFiles().paths();
    for (std::size_t i = 0; i < paths.size(); ++i) {
        const QString name = QFileInfo(QString::fromStdString(paths[i])).fileName();
        QAction* action = menu.addAction(QStringLiteral("&%1  %2")
                                             .arg((i + 1) % 10)
                                             .arg(QString(name).replace(QLatin1Char('&'), QLatin1String("&&"))));
        action->setToolTip(QString::fromStdString(paths[i]));
        QObject::connect(action, &QAction::triggered, &m_window, [this, i] { openRecent(i); });
    }
    if (paths.empty()) menu.addAction(m_parts.text(TextId::recentNone))->setEnabled(false);
    menu.setToolTipsVisible(true);
}

} // namespace tessaro
