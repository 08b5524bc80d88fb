#pragma once

#include "tests/app/MixerModelFixture.h"
#include "ui/PanelModel.h"
#include "ui/PanelWindow.h"

#include <QCoreApplication>
#include <QGuiApplication>
#include <QQuickItem>
#include <QQuickView>
#include <QTest>

#include <memory>
#include <string>
#include <vector>

namespace fadewell {

/// A panel without a screen over a mixer on virtual time.
class PanelFixture : public MixerModelFixture {
protected:
    struct Obstacles final : Tappability {
        std::vector<UntappableProcess> processes;
        [[nodiscard]] std::vector<UntappableProcess> untappable() override { return processes; }
    };

    void SetUp() override
    {
        MixerModelFixture::SetUp();
        launch();
    }

    void TearDown() override
    {
        onMain([this] { panel_.reset(); });
    }

    void open(PanelWindow::Actions actions = {})
    {
        onMain([&] {
            panel_ = std::make_unique<PanelWindow>(
                PanelWindow::Parts{model_, workspace_, obstacles_}, std::move(actions));
            panel_->show(QRect(500, 0, 20, 20));
        });
        settle();
    }

    /// Lets the window lay itself out.
    void settle()
    {
        onMain([] { QCoreApplication::processEvents(); });
    }

    [[nodiscard]] static QQuickView& window()
    {
        return *qobject_cast<QQuickView*>(QGuiApplication::topLevelWindows().front());
    }

    [[nodiscard]] static PanelModel& model()
    {
        return *window().rootObject()->property("panel").value<PanelModel*>();
    }

    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        onMain([&] { QTest::keyClick(&window(), key, modifiers); });
        settle();
    }

    [[nodiscard]] static std::vector<std::string> titles(const MenuModel& menu)
    {
        std::vector<std::string> titles;
        for (const auto& entry : menu.entries()) {
            titles.push_back((entry.isChecked ? "*" : "") + entry.title.toStdString() +
                             (entry.hasDividerBelow ? "|" : ""));
        }
        return titles;
    }

    std::shared_ptr<Obstacles> obstacles_ = std::make_shared<Obstacles>();
    std::unique_ptr<PanelWindow> panel_;
};

} // namespace fadewell
