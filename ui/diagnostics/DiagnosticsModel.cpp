#include "ui/diagnostics/DiagnosticsModel.h"

#include <QFileInfo>
#include <QPointer>
#include <QSaveFile>

#include <utility>

namespace fadewell {

DiagnosticsModel::DiagnosticsModel(DiagnosticsParts parts)
    : parts_(std::move(parts))
{
    gather();
}

void DiagnosticsModel::gather()
{
    text_.clear(); // Nothing with names can be copied once they are to be left out.
    isGathering_ = true;
    setStatus(tr("Gathering…"));
    parts_.gather(!leavesOutNames_,
                  [self = QPointer(this), leavesOut = leavesOutNames_](const std::string& text) {
                      if (self) {
                          self->take(text, leavesOut);
                      }
                  });
}

void DiagnosticsModel::take(const std::string& text, bool leavesOutNames)
{
    if (isGathering_ && leavesOutNames == leavesOutNames_) {
        isGathering_ = false;
        text_ = QString::fromStdString(text);
        setStatus({});
    }
}

void DiagnosticsModel::setLeavesOutNames(bool leavesOut)
{
    if (leavesOut != leavesOutNames_) {
        leavesOutNames_ = leavesOut;
        gather();
    }
}

void DiagnosticsModel::setStatus(const QString& status)
{
    status_ = status;
    emit changed();
}

void DiagnosticsModel::copy()
{
    parts_.copy(text_);
    setStatus(tr("Copied"));
}

void DiagnosticsModel::save()
{
    // The text that was read is the one that is saved, whatever is switched meanwhile.
    parts_.chooseFile([self = QPointer(this), text = text_](const QString& path) {
        if (self) {
            self->write(path, text);
        }
    });
}

void DiagnosticsModel::write(const QString& path, const QString& text)
{
    QSaveFile file(path);
    const auto bytes = text.toUtf8();
    if (file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() && file.commit()) {
        setStatus(tr("Saved as %1").arg(QFileInfo(path).fileName()));
    } else {
        setStatus(tr("It couldn’t be saved: %1").arg(file.errorString()));
    }
}

} // namespace fadewell
