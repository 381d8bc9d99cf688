// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/program.h"
#include "app/silent_midi.h"
#include "base/manual_clock.h"
#include "views/frame/main_frame.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QEvent>
#include <QTemporaryDir>

#include <unistd.h>

#include <cstdlib>
#include <ctime>
#include <fstream>
#include <memory>
#include <optional>
#include <span>
#include <string>

namespace tessaro::bench {

inline constexpr QSize windowSize(1920, 1080);

/// Milliseconds on the wall, and of the processor's time.
struct Duration {
    double wall = 0;
    double cpu = 0;

    Duration& operator+=(const Duration& other)
    {
        wall += other.wall;
        cpu += other.cpu;
        return *this;
    }
};

/// How long a call takes.
template <class Call>
Duration timed(Call&& call)
{
    QElapsedTimer watch;
    watch.start();
    const std::clock_t start = std::clock();
    call();
    const double cpu = 1000.0 * static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC;
    return {static_cast<double>(watch.nsecsElapsed()) / 1e6, cpu};
}

/// The least of several runs.
class Least {
public:
    void add(const Duration& duration)
    {
        if (!m_least || duration.cpu < m_least->cpu) m_least = duration;
    }
    [[nodiscard]] Duration operator()() const { return m_least.value_or(Duration{}); }

private:
    std::optional<Duration> m_least;
};

/// Sees the events of the application, paintings among them.
class Paintings final : public QObject {
public:
    Paintings() { qApp->installEventFilter(this); }

    /// Lets the window paint once.
    void first()
    {
        const std::size_t before = m_count;
        while (m_count == before) QCoreApplication::processEvents();
    }
    /// Lets the window work and paint until nothing is left to do.
    void all()
    {
        for (std::size_t before = m_events + 1; before != m_events;) {
            before = m_events;
            QCoreApplication::processEvents();
        }
    }

protected:
    bool eventFilter(QObject*, QEvent* event) override
    {
        ++m_events;
        m_count += event->type() == QEvent::Paint ? 1U : 0U;
        return false;
    }

private:
    std::size_t m_events = 0;
    std::size_t m_count = 0; ///< of paintings
};

/// What the process holds in memory.
inline double residentMegabytes()
{
    std::ifstream in("/proc/self/statm");
    double size = 0;
    double resident = 0;
    in >> size >> resident;
    return resident * static_cast<double>(sysconf(_SC_PAGESIZE)) / (1 << 20U);
}

/// Files and settings of their own, and the window program over them: without devices, in simulated time.
class WindowProgram {
public:
    /// Settings with the window in the size that is measured.
    WindowProgram()
    {
        start();
        program().frame().setGeometry(QRect({0, 0}, windowSize));
        program().frame().close();
        m_program.reset();
    }

    void start(const std::string& song = {})
    {
        m_program.reset();
        m_program = std::make_unique<Program>(
            m_clock, m_midi, m_store, m_strings,
            ProgramFolders{path(""), {}, QStringLiteral(TESSARO_SOURCE_DIR "/data/icons"), path("recovery")},
            [] { return QString(); });
        m_program->user().saveBox = [](const QString&) { return SaveAnswer::discard; };
        using Shell = CommandLine::Shell;
        if (!m_program->start({song.empty() ? Shell::fileNew : Shell::fileOpen, song})) std::abort();
    }
    void stop() { m_program.reset(); }

    [[nodiscard]] Program& program() { return *m_program; }
    [[nodiscard]] std::string path(const char* name) const { return m_folder.path().toStdString() + '/' + name; }

    [[nodiscard]] std::string write(const char* name, std::span<const std::uint8_t> bytes) const
    {
        std::ofstream out(path(name), std::ios::binary);
        out.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
        return path(name);
    }

private:
    QTemporaryDir m_folder;
    Strings m_strings{Language::english};
    ManualClock m_clock;
    SilentMidi m_midi{"Silence"};
    ProfileStore m_store{path("tessaro.ini")};
    std::unique_ptr<Program> m_program;
};

} // namespace tessaro::bench
