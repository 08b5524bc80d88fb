#pragma once

#include "ui/diagnostics/DiagnosticsParts.h"

#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

#include <string>

namespace fadewell {

/// The text of the diagnostics window and what can be done with it. [main thread]
class DiagnosticsModel final : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the diagnostics window")
    Q_PROPERTY(QString text READ text NOTIFY changed)
    Q_PROPERTY(bool isGathering READ isGathering NOTIFY changed)
    Q_PROPERTY(bool leavesOutNames READ leavesOutNames WRITE setLeavesOutNames NOTIFY changed)
    Q_PROPERTY(QString status READ status NOTIFY changed)

public:
    /// Begins to gather.
    explicit DiagnosticsModel(DiagnosticsParts parts);

    /// Empty while it is gathered.
    [[nodiscard]] QString text() const { return text_; }
    [[nodiscard]] bool isGathering() const { return isGathering_; }

    /// On to begin with: what isn't there can't be passed on by mistake.
    [[nodiscard]] bool leavesOutNames() const { return leavesOutNames_; }
    void setLeavesOutNames(bool leavesOut);

    /// What is going on, or what became of the last copy or save; empty before.
    [[nodiscard]] QString status() const { return status_; }

    Q_INVOKABLE void copy();
    Q_INVOKABLE void save();

signals:
    void changed();

private:
    void gather();
    void take(const std::string& text, bool leavesOutNames);
    void write(const QString& path, const QString& text);
    void setStatus(const QString& status);

    DiagnosticsParts parts_;
    bool isGathering_ = false;
    QString text_;
    QString status_;
    bool leavesOutNames_ = true;
};

} // namespace fadewell
