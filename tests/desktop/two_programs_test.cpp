// SPDX-License-Identifier: GPL-3.0-or-later
// Two running programs on one desktop, and what goes from one to the other.
#include <QCoreApplication>
#include <QProcess>
#include <QStandardPaths>

#include <gtest/gtest.h>

#include <memory>

namespace tessaro::test {
namespace {

/// For a machine under load; nothing here takes a second.
constexpr int patience = 100'000;

QByteArray line(QProcess& process)
{
    while (!process.canReadLine())
        if (!process.waitForReadyRead(patience)) return {};
    return process.readLine().trimmed();
}

/// A program that does what it is told.
class Led {
public:
    Led(const QByteArray& display, const QString& song)
    {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("xcb"));
        environment.insert(QStringLiteral("DISPLAY"), ':' + QString::fromLatin1(display));
        m_process.setProcessEnvironment(environment);
        m_process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        m_process.start(QCoreApplication::applicationFilePath(), {QStringLiteral("--program"), song});
    }
    ~Led()
    {
        m_process.closeWriteChannel();
        m_process.waitForFinished(patience);
    }
    QByteArray operator()(const char* command)
    {
        m_process.write(QByteArray(command) + '\n');
        return line(m_process);
    }

private:
    QProcess m_process;
};

class TwoPrograms : public testing::Test {
protected:
    void SetUp() override
    {
        const QString server = QStandardPaths::findExecutable(QStringLiteral("Xvfb"));
        if (server.isEmpty()) GTEST_SKIP() << "Xvfb is not installed";
        m_server.start(server, {QStringLiteral("-displayfd"), QStringLiteral("1"), QStringLiteral("-nolisten"),
                                QStringLiteral("tcp"), QStringLiteral("-noreset")});
        const QByteArray display = line(m_server);
        ASSERT_FALSE(display.isEmpty());
        one = std::make_unique<Led>(display, QStringLiteral(TESSARO_SOURCE_DIR "/examples/harbour-lights.mid"));
        two = std::make_unique<Led>(display, QString());
    }
    void TearDown() override
    {
        one.reset();
        two.reset();
        m_server.terminate();
        m_server.waitForFinished(patience);
    }

    std::unique_ptr<Led> one; ///< has a song
    std::unique_ptr<Led> two; ///< has a new one

private:
    QProcess m_server;
};

TEST_F(TwoPrograms, ShareBlocksAndEvents)
{
    // More than the desktop hands over in one piece.
    ASSERT_EQ("filled", (*one)("fill 40 200000"));
    const QByteArray song = (*one)("blks");
    ASSERT_GT(song.size(), 3'000'000);
    EXPECT_EQ("0", (*two)("pasteBlks 0 0"));
    ASSERT_EQ("copied", (*one)("copyBlks"));
    EXPECT_EQ(QByteArray::number(song.count(';')), (*two)("pasteBlks 0 0"));
    EXPECT_TRUE(song == (*two)("blks"));

    const QByteArray events = (*one)("copyEvnts 40");
    EXPECT_TRUE(events.startsWith("200000 "));
    EXPECT_TRUE(events == (*two)("pasteEvnts 50 0"));
    const QByteArray master = (*one)("copyEvnts 0");
    EXPECT_GT(master.size(), 20);
    EXPECT_EQ("0", (*two)("pasteEvnts 50 0")) << "those of the master track go nowhere else";
    EXPECT_EQ(master, (*two)("pasteEvnts 0 0"));

    // And back again, as long as their owner runs.
    EXPECT_EQ("copied", (*two)("copyBlks"));
    two.reset();
    EXPECT_EQ("0", (*one)("pasteBlks 0 0"));
    EXPECT_TRUE(song == (*one)("blks"));
}

} // namespace
} // namespace tessaro::test
