#pragma once

#include "app/LoginItemService.h"
#include "base/UserDefaults.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QObject>

#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace fadewell {

/// The login item of a sandboxed program: the desktop's portal asks the person and writes the entry
/// outside. What it last answered stands in the user defaults, since nobody can ask it. [main
/// queue]
class PortalLoginItem final : public QObject, public LoginItemService {
    Q_OBJECT

public:
    static constexpr const char* answerKey = "portalLoginItem";

    PortalLoginItem(QDBusConnection bus, std::shared_ptr<UserDefaults> defaults);

    [[nodiscard]] LoginItemStatus status() override;
    std::optional<std::string> registerItem() override { return request(true); }
    std::optional<std::string> unregisterItem() override { return request(false); }
    void onChanged(std::function<void()> changed) override { changed_ = std::move(changed); }

private slots:
    void responded(const QDBusMessage& message);

private:
    std::optional<std::string> request(bool wantsStart);
    void listenTo(const QString& path);

    QDBusConnection bus_;
    std::shared_ptr<UserDefaults> defaults_;
    std::function<void()> changed_;
    QString request_; ///< the path of the one that is open
    bool wantsStart_ = false;
    int requests_ = 0;
};

} // namespace fadewell
