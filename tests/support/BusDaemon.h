#pragma once

#include <QProcess>
#include <QString>
#include <QTemporaryFile>

namespace fadewell {

/// A message bus that only this test is on, and that starts no service of the machine.
class BusDaemon {
public:
    BusDaemon()
    {
        configuration_.open();
        configuration_.write(R"(<busconfig>
            <type>session</type>
            <listen>unix:tmpdir=/tmp</listen>
            <policy context="default">
                <allow send_destination="*" eavesdrop="true"/>
                <allow eavesdrop="true"/>
                <allow own="*"/>
            </policy>
        </busconfig>)");
        configuration_.close();
        process_.start(
            "dbus-daemon",
            {"--config-file=" + configuration_.fileName(), "--nofork", "--print-address"});
        if (process_.waitForReadyRead()) {
            address_ = QString::fromUtf8(process_.readLine()).trimmed();
        }
    }
    ~BusDaemon()
    {
        process_.kill();
        process_.waitForFinished();
    }
    BusDaemon(const BusDaemon&) = delete;
    BusDaemon& operator=(const BusDaemon&) = delete;

    /// Empty when it could not be started.
    [[nodiscard]] const QString& address() const { return address_; }

private:
    QTemporaryFile configuration_;
    QProcess process_;
    QString address_;
};

} // namespace fadewell
