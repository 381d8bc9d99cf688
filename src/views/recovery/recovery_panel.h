// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QWidget>

#include <functional>
#include <vector>

class QLabel;
class QPushButton;
class QTreeWidget;

namespace tessaro {

class Icons;
class UiText;
struct RecoverableSong;

/// A line of the list of songs that were not saved.
struct RecoveryLine {
    QString name;
    QString time;   ///< when the copy was made
    QString length; ///< a dash where it is not known
    bool take;      ///< one was under way
};

/// What the list shows of a song, in the language in use.
[[nodiscard]] RecoveryLine recoveryLine(const RecoverableSong& song, const UiText& text);

/// A strip over the tracks that offers songs which were not saved: a list, and what to do with the chosen one. It does
/// nothing itself. Enter takes the chosen song, Delete discards it, Escape puts the list off.
class RecoveryPanel : public QWidget {
public:
    RecoveryPanel(const Icons& icons, const UiText& text, QWidget* parent = nullptr);

    std::function<void(std::size_t index)> onOpen;
    std::function<void(std::size_t index)> onDiscard;
    std::function<void()> onLater;

    /// Shows these songs, or hides the panel when there are none.
    void setSongs(const std::vector<RecoverableSong>& songs);
    void retranslate();

    [[nodiscard]] QTreeWidget& list() const { return *m_list; }
    [[nodiscard]] QPushButton& openButton() const { return *m_open; }
    [[nodiscard]] QPushButton& discardButton() const { return *m_discard; }
    [[nodiscard]] QPushButton& laterButton() const { return *m_later; }

protected:
    bool event(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void withChosen(const std::function<void(std::size_t)>& act) const;
    void fitHeight();
    [[nodiscard]] int rowHeight() const;
    void drawIcon();

    const Icons& m_icons;
    const UiText& m_text;
    // Children of the widget.
    QLabel* m_picture;
    QLabel* m_sentence;
    QTreeWidget* m_list;
    QPushButton* m_open;
    QPushButton* m_discard;
    QPushButton* m_later;
};

} // namespace tessaro
