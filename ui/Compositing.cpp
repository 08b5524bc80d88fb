#include "ui/Compositing.h"

#include <QGuiApplication>

#include <xcb/xcb.h>

#include <cstdlib>
#include <memory>
#include <string>

namespace fadewell {
namespace {

template <class Reply>
std::unique_ptr<Reply, decltype(&std::free)> owned(Reply* reply)
{
    return {reply, &std::free};
}

/// A compositing manager owns the selection of this name while it runs.
bool hasCompositor(xcb_connection_t* connection)
{
    const std::string selection = "_NET_WM_CM_S0";
    const auto atom = owned(xcb_intern_atom_reply(
        connection,
        xcb_intern_atom(
            connection, 1, static_cast<std::uint16_t>(selection.size()), selection.data()),
        nullptr));
    if (!atom || atom->atom == XCB_ATOM_NONE) {
        return false;
    }
    const auto owner = owned(xcb_get_selection_owner_reply(
        connection, xcb_get_selection_owner(connection, atom->atom), nullptr));
    return owner && owner->owner != XCB_NONE;
}

} // namespace

bool isComposited()
{
    const auto* x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    auto* connection = x11 == nullptr ? nullptr : x11->connection();
    return connection == nullptr || hasCompositor(connection); // Others always are.
}

} // namespace fadewell
