#pragma once

#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

class QJSEngine;
class QQmlEngine;

namespace fadewell {

/// The texts that name the system around the program, in the words of the system it runs on.
/// [main thread]
class PlatformTexts final : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    Q_PROPERTY(QString showIcon READ showIcon CONSTANT)
    Q_PROPERTY(QString allowLogin READ allowLogin CONSTANT)
    Q_PROPERTY(QString whyAudio READ whyAudio CONSTANT)
    Q_PROPERTY(QString callMode READ callMode CONSTANT)
    Q_PROPERTY(QString onboardingWhyAudio READ onboardingWhyAudio CONSTANT)
    Q_PROPERTY(QString onboardingAsking READ onboardingAsking CONSTANT)
    Q_PROPERTY(QString onboardingLater READ onboardingLater CONSTANT)
    Q_PROPERTY(QString iconPlace READ iconPlace CONSTANT)

public:
    enum class System {
        mac,
        freeDesktop
    };
    /// The one this program was built for.
    static System current();

    explicit PlatformTexts(System system = current(), QObject* parent = nullptr)
        : QObject(parent)
        , system_(system)
    {}
    /// For the QML engine.
    static PlatformTexts* create(QQmlEngine* engine, QJSEngine* scriptEngine);

    [[nodiscard]] QString showIcon() const;
    [[nodiscard]] QString allowLogin() const;
    [[nodiscard]] QString whyAudio() const;
    [[nodiscard]] QString callMode() const;
    [[nodiscard]] QString onboardingWhyAudio() const;
    [[nodiscard]] QString onboardingAsking() const;
    [[nodiscard]] QString onboardingLater() const;
    /// Where the icon is; %1 stands for its picture.
    [[nodiscard]] QString iconPlace() const;

private:
    struct Entry {
        const char* mac;
        const char* freeDesktop;
    };
    [[nodiscard]] QString text(const Entry& entry) const;

    System system_;
};

} // namespace fadewell
