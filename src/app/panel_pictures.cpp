// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/panel_pictures.h"

#include "app/program.h"
#include "views/commands/keys_dialog.h"
#include "views/edits/edit_kind.h"
#include "views/edits/edit_panel.h"
#include "views/frame/editor_windows.h"
#include "views/setup/setup_sheet.h"
#include "views/tracks/track_frame.h"

#include <QApplication>
#include <QListWidget>
#include <QPainter>
#include <QPixmap>
#include <QTimer>

#include <algorithm>
#include <functional>
#include <map>
#include <vector>

namespace tessaro {
namespace {

constexpr int widest = 1560;
constexpr int gap = 16;

using Pictures = std::vector<QPixmap>;

/// In rows, on a ground that lets their edges be seen.
QPixmap sideBySide(const Pictures& pictures)
{
    std::vector<QPointF> places;
    QPointF at(gap, gap);
    double bottom = gap;
    double right = 0;
    for (const QPixmap& picture : pictures) {
        const QSizeF size = picture.deviceIndependentSize();
        if (at.x() > gap && at.x() + size.width() + gap > widest) at = {gap, bottom + gap};
        places.push_back(at);
        at.rx() += size.width() + gap;
        right = std::max(right, at.x());
        bottom = std::max(bottom, at.y() + size.height());
    }
    const double scale = pictures.empty() ? 1 : pictures.front().devicePixelRatio();
    QPixmap all((QSizeF(right, bottom + gap) * scale).toSize());
    all.setDevicePixelRatio(scale);
    all.fill(QApplication::palette().color(QPalette::Mid));
    QPainter painter(&all);
    for (std::size_t i = 0; i < pictures.size(); ++i) painter.drawPixmap(places[i], pictures[i]);
    return all;
}

/// A window that the command opens beside the main one; it is closed again.
QPixmap opened(QWidget& main, const std::function<void()>& open)
{
    const QWidgetList before = QApplication::topLevelWidgets();
    open();
    QApplication::processEvents();
    for (QWidget* window : QApplication::topLevelWidgets()) {
        if (!window->isVisible() || window == &main || before.contains(window)) continue;
        const QPixmap picture = window->grab();
        window->close();
        return picture;
    }
    return {};
}

/// A dialog that the command waits for; with each of its pages.
Pictures asked(QAction& command)
{
    Pictures pictures;
    QTimer::singleShot(0, [&pictures] {
        auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
        if (!dialog) return;
        const auto* sheet = dynamic_cast<SetupSheet*>(dialog);
        for (int page = 0; page < (sheet ? sheet->pageList().count() : 1); ++page) {
            if (sheet) sheet->pageList().setCurrentRow(page);
            QApplication::processEvents();
            pictures.push_back(dialog->grab());
        }
        dialog->reject();
    });
    command.trigger();
    return pictures;
}

ChildFrame& notesOf(CMainFrame& frame)
{
    ChildFrame* piano = frame.windows().open(WindowKind::piano, 1);
    piano->run(ViewCommand::selectAll);
    return *piano;
}

Pictures editPanels(CMainFrame& frame)
{
    notesOf(frame);
    Pictures pictures;
    for (int i = 0; i < everydayEdits; ++i) {
        const auto edit = static_cast<EverydayEdit>(i);
        if (edit == EverydayEdit::quantiseAgain || editKind(edit).fields.empty()) continue;
        pictures.push_back(opened(frame, [&] { frame.edits().run(edit); }));
    }
    return pictures;
}

Pictures propertyPages(CMainFrame& frame)
{
    CTrackFrame& tracks = frame.trackFrame();
    const auto properties = [](ChildFrame& window) { return [&window] { window.run(ViewCommand::properties); }; };
    Pictures pictures{opened(frame, properties(tracks))};
    tracks.run(ViewCommand::selectAll);
    pictures.push_back(opened(frame, properties(tracks)));
    pictures.push_back(opened(frame, properties(notesOf(frame))));
    return pictures;
}

Pictures setupDialogs(CMainFrame& frame)
{
    Pictures pictures;
    FrameActions& actions = frame.actions();
    for (QAction* command : {&actions.systemSetup, &actions.recordSettings, &actions.metronomeSettings})
        std::ranges::copy(asked(*command), std::back_inserter(pictures));
    return pictures;
}

Pictures keysDialog(CMainFrame& frame) { return {frame.keys().show().grab()}; }

const std::map<QString, Pictures (*)(CMainFrame&)> kinds{{QStringLiteral("edits"), editPanels},
                                                         {QStringLiteral("pages"), propertyPages},
                                                         {QStringLiteral("setup"), setupDialogs},
                                                         {QStringLiteral("keys"), keysDialog}};

} // namespace

bool knowsPanels(const QString& name) { return kinds.contains(name); }

QPixmap panelPicture(Program& program, const QString& name) { return sideBySide(kinds.at(name)(program.frame())); }

} // namespace tessaro
