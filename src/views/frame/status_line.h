// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/ports/progress.h"

#include <QElapsedTimer>
#include <QWidget>

class QProgressBar;

namespace tessaro {

class ElidedLabel;
class Icons;

/// The lower edge of the window: which sound and MIDI ways are in use, the last news, and the progress of long work.
/// While long work goes on the window paints now and then, but takes no input; `busy` tells others to keep their hands
/// off the song meanwhile.
class StatusLine : public QWidget, public ProgressPort {
public:
    explicit StatusLine(const Icons& icons, QWidget* parent = nullptr);

    void setDevices(const QString& sentence);
    void setNews(const QString& sentence);
    [[nodiscard]] QString devices() const;
    [[nodiscard]] QString news() const;
    [[nodiscard]] bool busy() const { return m_busy; }

    void begin() override;
    void range(std::uint32_t low, std::uint32_t high) override;
    void pos(std::uint32_t position) override;
    void text(std::string_view line) override;
    void end() override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void keepPainting();

    const Icons& m_icons;
    // Children of the widget.
    ElidedLabel* m_devices;
    ElidedLabel* m_news;
    QProgressBar* m_progress;
    bool m_busy = false;
    QElapsedTimer m_sincePainting; ///< or since the work began
};

} // namespace tessaro
