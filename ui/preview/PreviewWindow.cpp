#include "ui/preview/PreviewWindow.h"

#include <QCoreApplication>
#include <QGuiApplication>
#include <QImage>
#include <QMetaObject>
#include <QQuickItem>
#include <QQuickWindow>
#include <QTimer>

#include <CLI/CLI.hpp>
#include <cstdio>

namespace fadewell::preview {
namespace {

QQuickWindow* window()
{
    const auto windows = QGuiApplication::topLevelWindows();
    return windows.isEmpty() ? nullptr : qobject_cast<QQuickWindow*>(windows.front());
}

/// Items of lists are no child objects of their window, only child items.
QQuickItem* findItem(QQuickItem* item, const QString& name)
{
    if (item->objectName() == name) {
        return item;
    }
    for (auto* child : item->childItems()) {
        if (auto* found = findItem(child, name)) {
            return found;
        }
    }
    return nullptr;
}

void press(const std::string& name)
{
    auto* item = window() != nullptr
                     ? findItem(window()->contentItem(), QString::fromStdString(name))
                     : nullptr;
    if (item == nullptr || !QMetaObject::invokeMethod(item, "clicked")) {
        std::fprintf(stderr, "no button %s\n", name.c_str());
    }
}

void takePicture(const std::string& path)
{
    const bool isSaved =
        window() != nullptr && window()->grabWindow().save(QString::fromStdString(path));
    if (!isSaved) {
        std::fprintf(stderr, "can't write %s\n", path.c_str());
    }
    QCoreApplication::exit(isSaved ? 0 : 1);
}

} // namespace

void addAppearanceOptions(CLI::App& app, Appearance& appearance)
{
    app.add_flag("--dark", appearance.isDark, "Dark colours");
    app.add_flag("--contrast", appearance.isHighContrast, "Strong colours");
    app.add_flag("--reduce-motion", appearance.reduceMotion, "No animation");
    app.add_option("--text-scale", appearance.textScale, "Size of texts")
        ->check(CLI::Range(0.5, 3.0));
}

void addVisitOptions(CLI::App& app, Visit& visit)
{
    app.add_option("--press", visit.presses, "Object names of what to press first, in order");
    app.add_option("--picture", visit.picture, "Write a picture of the window there and end");
}

void visitLater(const Visit& visit, int delay)
{
    constexpr int pause = 300; // milliseconds
    for (const auto& name : visit.presses) {
        QTimer::singleShot(delay += pause, [name] { press(name); });
    }
    if (!visit.picture.empty()) {
        QTimer::singleShot(delay + 2 * pause, [path = visit.picture] { takePicture(path); });
    }
}

} // namespace fadewell::preview
