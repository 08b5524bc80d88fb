#pragma once

#include "base/Subscription.h"
#include "shortcuts/Recorder.h"

#include <QObject>
#include <QString>
#include <QStringList>
#include <QtQml/qqmlregistration.h>

#include <functional>
#include <memory>
#include <vector>

namespace fadewell {

/// What a shortcut field shows and calls; the rules are the recorder's. [main thread]
class RecorderField final : public QObject, private shortcuts::RecorderHost {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the settings window")
    Q_PROPERTY(QString title READ title CONSTANT)
    Q_PROPERTY(QString text READ text NOTIFY changed)
    Q_PROPERTY(QString spokenText READ spokenText NOTIFY changed)
    Q_PROPERTY(bool isRecording READ isRecording NOTIFY changed)
    Q_PROPERTY(bool showsCancelButton READ showsCancelButton NOTIFY changed)
    Q_PROPERTY(bool isAsking READ isAsking NOTIFY alertChanged)
    Q_PROPERTY(QString alertMessage READ alertMessage NOTIFY alertChanged)
    Q_PROPERTY(QString alertText READ alertText NOTIFY alertChanged)
    Q_PROPERTY(QStringList alertButtons READ alertButtons NOTIFY alertChanged)

public:
    RecorderField(std::shared_ptr<shortcuts::KeyboardShortcuts> shortcuts,
                  const shortcuts::Name& name,
                  QString title,
                  QObject* parent);
    ~RecorderField() override;

    [[nodiscard]] QString title() const { return title_; }
    /// The shortcut in symbols; empty: it has none.
    [[nodiscard]] QString text() const;
    /// The shortcut in words.
    [[nodiscard]] QString spokenText() const;
    [[nodiscard]] bool isRecording() const;
    [[nodiscard]] bool showsCancelButton() const;

    // The question that waits for an answer.
    [[nodiscard]] bool isAsking() const { return bool(answered_); }
    [[nodiscard]] QString alertMessage() const;
    [[nodiscard]] QString alertText() const;
    [[nodiscard]] QStringList alertButtons() const;

    /// The field got the keyboard, in a window that has it.
    Q_INVOKABLE void begin();
    /// It lost the keyboard.
    Q_INVOKABLE void end();
    Q_INVOKABLE void clear();
    /// A button of the question, counted from 0.
    Q_INVOKABLE void answer(int button);

signals:
    void changed();
    void alertChanged();
    void keyboardDropped(); ///< the field is to give the keyboard away

private:
    void present(const shortcuts::Alert& alert, std::function<void(int)> answered) override;
    void clearFirstResponder() override;
    [[nodiscard]] std::vector<shortcuts::MenuItem> mainMenu() const override;

    std::shared_ptr<shortcuts::KeyboardShortcuts> shortcuts_;
    QString title_;
    shortcuts::Alert alert_;
    std::function<void(int)> answered_; ///< empty: nothing is asked
    std::shared_ptr<shortcuts::Recorder> recorder_;
    std::vector<Subscription> observations_;
};

} // namespace fadewell
