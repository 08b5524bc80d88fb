#pragma once

#include "base/Subscription.h"
#include "ui/tray/EmbeddedIcon.h"
#include "ui/tray/MenuBarIcon.h"
#include "ui/tray/MenuOnBus.h"
#include "ui/tray/StatusNotifierItem.h"
#include "ui/tray/TrayActions.h"
#include "ui/tray/TrayHost.h"
#include "ui/tray/TrayLook.h"

#include <QObject>
#include <QString>

#include <memory>
#include <vector>

namespace fadewell {

/// Fadewell's icon in the desktop's tray, in whichever kind of tray there is. [main thread]
class Tray final : public QObject {
    Q_OBJECT

public:
    enum class Presence {
        unknown, ///< the desktop hasn't answered yet, or the icon isn't wanted
        absent,  ///< wanted, but there is no tray; one may come at any time
        shown
    };

    struct Options {
        QString busAddress{};  ///< empty: the session's
        bool canEmbed = false; ///< on X11 with a QApplication: trays of the old kind as well
        ScrollSteps::Host host = ScrollSteps::Host::unknown;
    };

    Tray(TrayActions::Parts parts, Options options);
    ~Tray() override;

    /// Shows the icon where and whenever there is a tray, or takes it away.
    void setInserted(bool isInserted);

    /// What the tray looks like, as far as that is known.
    void setLook(const TrayLook& look);

    [[nodiscard]] Presence presence() const;

Q_SIGNALS:
    void presenceChanged();
    /// A menu that we draw ourselves took the keyboard, or gave it back.
    void menuTracked(QMenu* menu, bool isTracking);

private:
    void insert();
    void remove();
    void update();
    void updateEntries();
    void followHost();

    TrayActions::Parts parts_;
    Options options_;
    TrayActions actions_;
    MenuOnBus menu_;
    TrayLook look_;
    bool isInserted_ = false;
    std::unique_ptr<StatusNotifierItem> item_;
    std::unique_ptr<TrayHost> host_; ///< absent without a bus
    std::unique_ptr<EmbeddedIcon> embedded_;
    std::vector<Subscription> observations_;
};

} // namespace fadewell
