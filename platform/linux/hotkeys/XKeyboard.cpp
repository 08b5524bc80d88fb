#include "platform/linux/hotkeys/XKeyboard.h"

#include "platform/linux/hotkeys/XcbReply.h"
#include "platform/linux/hotkeys/XcbXkb.h"
#include "shortcuts/Modifiers.h"

#include <algorithm>
#include <array>
#include <utility>
#include <xkbcommon/xkbcommon-keysyms.h>
#include <xkbcommon/xkbcommon-x11.h>

namespace fadewell {
namespace {

namespace classic = shortcuts::classic;

constexpr std::array<xkb_keysym_t, 2> superKeys{XKB_KEY_Super_L, XKB_KEY_Super_R};
constexpr std::array<xkb_keysym_t, 4> altKeys{
    XKB_KEY_Alt_L, XKB_KEY_Alt_R, XKB_KEY_Meta_L, XKB_KEY_Meta_R};
constexpr std::array<xkb_keysym_t, 1> numLockKeys{XKB_KEY_Num_Lock};
constexpr std::array<xkb_keysym_t, 1> scrollLockKeys{XKB_KEY_Scroll_Lock};

// Bits 3 to 7 of the state: what they mean is up to the keyboard.
constexpr int firstFreeModifier = 3;
constexpr int modifierCount = 8;

} // namespace

std::uint16_t XModifiers::state(std::uint32_t classicModifiers, bool& isPossible) const
{
    const struct {
        std::uint32_t classic;
        std::uint16_t state;
    } bits[] = {{classic::command, command},
                {classic::option, option},
                {classic::shift, XCB_MOD_MASK_SHIFT},
                {classic::control, XCB_MOD_MASK_CONTROL},
                {classic::function, 0}}; // Keyboards keep their fn key to themselves.
    std::uint16_t result = 0;
    isPossible = true;
    for (const auto& bit : bits) {
        if ((classicModifiers & bit.classic) != 0) {
            isPossible = isPossible && bit.state != 0;
            result = static_cast<std::uint16_t>(result | bit.state);
        }
    }
    return isPossible ? result : std::uint16_t{0};
}

std::uint16_t XModifiers::relevant() const
{
    return static_cast<std::uint16_t>(command | option | XCB_MOD_MASK_SHIFT | XCB_MOD_MASK_CONTROL);
}

std::vector<std::uint16_t> XModifiers::lockVariants() const
{
    std::vector<std::uint16_t> variants{0};
    for (const std::uint16_t lock : {std::uint16_t{XCB_MOD_MASK_LOCK}, numLock, scrollLock}) {
        const auto count = lock != 0 && (lock & relevant()) == 0 ? variants.size() : 0;
        for (std::size_t index = 0; index < count; ++index) {
            const auto variant = static_cast<std::uint16_t>(variants[index] | lock);
            if (std::find(variants.begin(), variants.end(), variant) == variants.end()) {
                variants.push_back(variant);
            }
        }
    }
    return variants;
}

bool XKeyboard::setUp(xcb_connection_t* connection)
{
    connection_ = connection;
    context_.reset(xkb_context_new(XKB_CONTEXT_NO_FLAGS), xkb_context_unref);
    if (!context_ || xkb_x11_setup_xkb_extension(connection_,
                                                 XKB_X11_MIN_MAJOR_XKB_VERSION,
                                                 XKB_X11_MIN_MINOR_XKB_VERSION,
                                                 XKB_X11_SETUP_XKB_EXTENSION_NO_FLAGS,
                                                 nullptr,
                                                 nullptr,
                                                 &firstEvent_,
                                                 nullptr) != 1)
    {
        return false;
    }
    device_ = xkb_x11_get_core_keyboard_device_id(connection_);
    return device_ >= 0 && selectEvents() && load();
}

bool XKeyboard::selectEvents() const
{
    constexpr std::uint16_t kinds = XCB_XKB_EVENT_TYPE_NEW_KEYBOARD_NOTIFY |
                                    XCB_XKB_EVENT_TYPE_MAP_NOTIFY | XCB_XKB_EVENT_TYPE_STATE_NOTIFY;
    constexpr std::uint16_t mapParts =
        XCB_XKB_MAP_PART_KEY_TYPES | XCB_XKB_MAP_PART_KEY_SYMS | XCB_XKB_MAP_PART_MODIFIER_MAP;
    xcb_xkb_select_events_details_t details{};
    details.affectNewKeyboard = XCB_XKB_NKN_DETAIL_KEYCODES;
    details.newKeyboardDetails = XCB_XKB_NKN_DETAIL_KEYCODES;
    details.affectState = XCB_XKB_STATE_PART_GROUP_STATE; // Not each modifier that is pressed.
    details.stateDetails = XCB_XKB_STATE_PART_GROUP_STATE;
    const auto device = static_cast<xcb_xkb_device_spec_t>(device_);
    const auto selected = xcb_xkb_select_events_aux_checked(
        connection_, device, kinds, 0, 0, mapParts, mapParts, &details);
    if (const XcbReply<xcb_generic_error_t> error(xcb_request_check(connection_, selected)); error)
    {
        return false;
    }
    constexpr std::uint32_t flag = XCB_XKB_PER_CLIENT_FLAG_DETECTABLE_AUTO_REPEAT;
    const auto asked = xcb_xkb_per_client_flags(connection_, device, flag, flag, 0, 0, 0);
    const XcbReply<xcb_xkb_per_client_flags_reply_t> flags(
        xcb_xkb_per_client_flags_reply(connection_, asked, nullptr));
    return flags && (flags->value & flag) != 0;
}

bool XKeyboard::load()
{
    std::shared_ptr<xkb_keymap> keymap(
        xkb_x11_keymap_new_from_device(
            context_.get(), connection_, device_, XKB_KEYMAP_COMPILE_NO_FLAGS),
        xkb_keymap_unref);
    if (!keymap) {
        return false;
    }
    const std::unique_ptr<xkb_state, decltype(&xkb_state_unref)> state(
        xkb_x11_state_new_from_device(keymap.get(), connection_, device_), xkb_state_unref);
    if (!state) {
        return false;
    }
    keymap_ = std::move(keymap);
    layout_ = xkb_state_serialize_layout(state.get(), XKB_STATE_LAYOUT_EFFECTIVE);
    return readModifiers();
}

bool XKeyboard::readModifiers()
{
    const XcbReply<xcb_get_modifier_mapping_reply_t> mapping(xcb_get_modifier_mapping_reply(
        connection_, xcb_get_modifier_mapping(connection_), nullptr));
    if (!mapping) {
        return false;
    }
    const auto* keycodes = xcb_get_modifier_mapping_keycodes(mapping.get());
    const int perModifier = mapping->keycodes_per_modifier;
    XModifiers found;
    for (int modifier = firstFreeModifier; modifier < modifierCount; ++modifier) {
        const auto bit = static_cast<std::uint16_t>(1U << modifier);
        for (int index = 0; index < perModifier; ++index) {
            const xkb_keycode_t keycode = keycodes[modifier * perModifier + index];
            // The first modifier counts: further ones are for keyboards of long ago.
            const auto note = [&](std::uint16_t& field, std::span<const xkb_keysym_t> symbols) {
                if (field == 0 && keycode != 0 && hasSymbol(keycode, symbols)) {
                    field = bit;
                }
            };
            note(found.command, superKeys);
            note(found.option, altKeys);
            note(found.numLock, numLockKeys);
            note(found.scrollLock, scrollLockKeys);
        }
    }
    modifiers_ = found;
    return true;
}

bool XKeyboard::hasSymbol(xkb_keycode_t keycode, std::span<const xkb_keysym_t> wanted) const
{
    const auto layouts = xkb_keymap_num_layouts_for_key(keymap_.get(), keycode);
    for (xkb_layout_index_t layout = 0; layout < layouts; ++layout) {
        const xkb_keysym_t* symbols = nullptr;
        const int count =
            xkb_keymap_key_get_syms_by_level(keymap_.get(), keycode, layout, 0, &symbols);
        if (count == 1 && std::find(wanted.begin(), wanted.end(), symbols[0]) != wanted.end()) {
            return true;
        }
    }
    return false;
}

} // namespace fadewell
