// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QLabel>
#include <QPointer>

class QLineEdit;

namespace tessaro {

/// Says below an open line why it cannot take what was typed. It goes with the line, or when it is ended.
class FaultLabel {
public:
    /// An empty sentence ends it.
    void say(const QString& sentence, QLineEdit& line);
    void end() { delete m_label; }

private:
    QPointer<QLabel> m_label; ///< beside the line, a child of its parent
};

} // namespace tessaro
