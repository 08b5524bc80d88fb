#include "ui/shortcuts/RecorderField.h"

#include "shortcuts/Modifiers.h"
#include "ui/shortcuts/ShortcutNames.h"
#include "ui/style/Language.h"

#include <utility>

namespace fadewell {

using namespace shortcuts;

RecorderField::RecorderField(std::shared_ptr<KeyboardShortcuts> shortcuts,
                             const Name& name,
                             QString title,
                             QObject* parent)
    : QObject(parent)
    , shortcuts_(std::move(shortcuts))
    , title_(std::move(title))
    , recorder_(Recorder::create(
          shortcuts_, *this, {.shortcutName = name}, Messages(shownLanguage().toStdString())))
{
    const auto tell = [this](const auto&) {
        emit changed();
    };
    observations_.push_back(recorder_->text.observe(tell));
    observations_.push_back(recorder_->isRecording.observe(tell));
    observations_.push_back(recorder_->showsCancelButton.observe(tell));
}

RecorderField::~RecorderField() = default;

QString RecorderField::text() const
{
    return QString::fromStdString(recorder_->text.get());
}

QString RecorderField::spokenText() const
{
    const auto shortcut = recorder_->shortcut();
    return shortcut ? spokenShortcut(*shortcut, *shortcuts_->service()) : QString();
}

bool RecorderField::isRecording() const
{
    return recorder_->isRecording.get();
}

bool RecorderField::showsCancelButton() const
{
    return recorder_->showsCancelButton.get();
}

QString RecorderField::alertMessage() const
{
    return QString::fromStdString(alert_.message);
}

QString RecorderField::alertText() const
{
    return QString::fromStdString(alert_.informativeText);
}

QStringList RecorderField::alertButtons() const
{
    QStringList titles;
    for (const auto& title : alert_.buttons) {
        titles << QString::fromStdString(title);
    }
    return titles;
}

void RecorderField::begin()
{
    recorder_->becomeFirstResponder();
}

void RecorderField::end()
{
    recorder_->endRecording();
}

void RecorderField::clear()
{
    recorder_->clear();
}

void RecorderField::answer(int button)
{
    if (const auto answered = std::exchange(answered_, nullptr)) {
        emit alertChanged();
        answered(alertFirstButton + button);
    }
}

void RecorderField::present(const Alert& alert, std::function<void(int)> answered)
{
    alert_ = alert;
    answered_ = std::move(answered);
    emit alertChanged();
}

void RecorderField::clearFirstResponder()
{
    emit keyboardDropped();
}

std::vector<MenuItem> RecorderField::mainMenu() const
{
    return {{.title = tr("Settings…").toStdString(),
             .keyEquivalent = ",",
             .modifierFlags = event::control},
            {.title = tr("Quit Fadewell").toStdString(),
             .keyEquivalent = "q",
             .modifierFlags = event::control}};
}

} // namespace fadewell
