// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace tessaro {

class CnpObserver;
class Smc;

/// The tempo box: shows the real tempo in whole beats a minute, and turns wishes for another one into a relative tempo,
/// which is thousandths on top of the song's. While fast forward is held the box stands still and a wish waits. Main
/// thread. Borrows all.
class TempoBox {
public:
    explicit TempoBox(Smc& smc) : m_smc(smc) {}
    void setObserver(CnpObserver* observer) noexcept { m_observer = observer; }

    /// What the box shows.
    [[nodiscard]] int tempo() const noexcept { return m_tempo; }
    /// The least relative tempo that reaches this many beats.
    void wish(int tempo);
    void setRelative(long thousandths);
    /// Shows what is in force.
    void update();

    [[nodiscard]] bool isFast() const noexcept { return m_fast; }
    /// Four times the song's tempo.
    void beginFast();
    /// Back to what was set, or has been wished for since.
    void endFast();

private:
    Smc& m_smc;
    CnpObserver* m_observer = nullptr;
    int m_tempo = 0;
    int m_savedRelTempo = 0;
    bool m_fast = false;
};

} // namespace tessaro
