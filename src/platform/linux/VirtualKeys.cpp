// VirtualKeys: the one table from virtual-key codes to X11 keysyms and Linux key codes.
#include "platform/linux/VirtualKeys.h"

#include <X11/keysym.h>
#include <linux/input-event-codes.h>

#include <array>

namespace ombrel::platform::linux {

namespace {

// Letters and punctuation are the keys at their US positions, as a cabinet's keyboard encoder sends them.
constexpr std::array kKeys = {
    VirtualKey { 8, XK_BackSpace, KEY_BACKSPACE },
    VirtualKey { 9, XK_Tab, KEY_TAB },
    VirtualKey { 12, XK_Clear, KEY_CLEAR },
    VirtualKey { 13, XK_Return, KEY_ENTER },
    VirtualKey { 13, XK_KP_Enter, KEY_KPENTER },
    VirtualKey { 16, XK_Shift_L, KEY_LEFTSHIFT },
    VirtualKey { 16, XK_Shift_R, KEY_RIGHTSHIFT },
    VirtualKey { 17, XK_Control_L, KEY_LEFTCTRL },
    VirtualKey { 17, XK_Control_R, KEY_RIGHTCTRL },
    VirtualKey { 18, XK_Alt_L, KEY_LEFTALT },
    VirtualKey { 18, XK_Alt_R, KEY_RIGHTALT },
    VirtualKey { 19, XK_Pause, KEY_PAUSE },
    VirtualKey { 20, XK_Caps_Lock, KEY_CAPSLOCK },
    VirtualKey { 27, XK_Escape, KEY_ESC },
    VirtualKey { 32, XK_space, KEY_SPACE },
    VirtualKey { 33, XK_Prior, KEY_PAGEUP },
    VirtualKey { 34, XK_Next, KEY_PAGEDOWN },
    VirtualKey { 35, XK_End, KEY_END },
    VirtualKey { 36, XK_Home, KEY_HOME },
    VirtualKey { 37, XK_Left, KEY_LEFT },
    VirtualKey { 38, XK_Up, KEY_UP },
    VirtualKey { 39, XK_Right, KEY_RIGHT },
    VirtualKey { 40, XK_Down, KEY_DOWN },
    VirtualKey { 44, XK_Print, KEY_SYSRQ },
    VirtualKey { 45, XK_Insert, KEY_INSERT },
    VirtualKey { 46, XK_Delete, KEY_DELETE },
    VirtualKey { '0', XK_0, KEY_0 },
    VirtualKey { '1', XK_1, KEY_1 },
    VirtualKey { '2', XK_2, KEY_2 },
    VirtualKey { '3', XK_3, KEY_3 },
    VirtualKey { '4', XK_4, KEY_4 },
    VirtualKey { '5', XK_5, KEY_5 },
    VirtualKey { '6', XK_6, KEY_6 },
    VirtualKey { '7', XK_7, KEY_7 },
    VirtualKey { '8', XK_8, KEY_8 },
    VirtualKey { '9', XK_9, KEY_9 },
    VirtualKey { 'A', XK_a, KEY_A },
    VirtualKey { 'B', XK_b, KEY_B },
    VirtualKey { 'C', XK_c, KEY_C },
    VirtualKey { 'D', XK_d, KEY_D },
    VirtualKey { 'E', XK_e, KEY_E },
    VirtualKey { 'F', XK_f, KEY_F },
    VirtualKey { 'G', XK_g, KEY_G },
    VirtualKey { 'H', XK_h, KEY_H },
    VirtualKey { 'I', XK_i, KEY_I },
    VirtualKey { 'J', XK_j, KEY_J },
    VirtualKey { 'K', XK_k, KEY_K },
    VirtualKey { 'L', XK_l, KEY_L },
    VirtualKey { 'M', XK_m, KEY_M },
    VirtualKey { 'N', XK_n, KEY_N },
    VirtualKey { 'O', XK_o, KEY_O },
    VirtualKey { 'P', XK_p, KEY_P },
    VirtualKey { 'Q', XK_q, KEY_Q },
    VirtualKey { 'R', XK_r, KEY_R },
    VirtualKey { 'S', XK_s, KEY_S },
    VirtualKey { 'T', XK_t, KEY_T },
    VirtualKey { 'U', XK_u, KEY_U },
    VirtualKey { 'V', XK_v, KEY_V },
    VirtualKey { 'W', XK_w, KEY_W },
    VirtualKey { 'X', XK_x, KEY_X },
    VirtualKey { 'Y', XK_y, KEY_Y },
    VirtualKey { 'Z', XK_z, KEY_Z },
    VirtualKey { 91, XK_Super_L, KEY_LEFTMETA },
    VirtualKey { 92, XK_Super_R, KEY_RIGHTMETA },
    VirtualKey { 93, XK_Menu, KEY_COMPOSE },
    VirtualKey { 96, XK_KP_0, KEY_KP0 },
    VirtualKey { 97, XK_KP_1, KEY_KP1 },
    VirtualKey { 98, XK_KP_2, KEY_KP2 },
    VirtualKey { 99, XK_KP_3, KEY_KP3 },
    VirtualKey { 100, XK_KP_4, KEY_KP4 },
    VirtualKey { 101, XK_KP_5, KEY_KP5 },
    VirtualKey { 102, XK_KP_6, KEY_KP6 },
    VirtualKey { 103, XK_KP_7, KEY_KP7 },
    VirtualKey { 104, XK_KP_8, KEY_KP8 },
    VirtualKey { 105, XK_KP_9, KEY_KP9 },
    VirtualKey { 106, XK_KP_Multiply, KEY_KPASTERISK },
    VirtualKey { 107, XK_KP_Add, KEY_KPPLUS },
    VirtualKey { 108, XK_KP_Separator, KEY_KPCOMMA },
    VirtualKey { 109, XK_KP_Subtract, KEY_KPMINUS },
    VirtualKey { 110, XK_KP_Decimal, KEY_KPDOT },
    VirtualKey { 111, XK_KP_Divide, KEY_KPSLASH },
    VirtualKey { 112, XK_F1, KEY_F1 },
    VirtualKey { 113, XK_F2, KEY_F2 },
    VirtualKey { 114, XK_F3, KEY_F3 },
    VirtualKey { 115, XK_F4, KEY_F4 },
    VirtualKey { 116, XK_F5, KEY_F5 },
    VirtualKey { 117, XK_F6, KEY_F6 },
    VirtualKey { 118, XK_F7, KEY_F7 },
    VirtualKey { 119, XK_F8, KEY_F8 },
    VirtualKey { 120, XK_F9, KEY_F9 },
    VirtualKey { 121, XK_F10, KEY_F10 },
    VirtualKey { 122, XK_F11, KEY_F11 },
    VirtualKey { 123, XK_F12, KEY_F12 },
    VirtualKey { 124, XK_F13, KEY_F13 },
    VirtualKey { 125, XK_F14, KEY_F14 },
    VirtualKey { 126, XK_F15, KEY_F15 },
    VirtualKey { 127, XK_F16, KEY_F16 },
    VirtualKey { 128, XK_F17, KEY_F17 },
    VirtualKey { 129, XK_F18, KEY_F18 },
    VirtualKey { 130, XK_F19, KEY_F19 },
    VirtualKey { 131, XK_F20, KEY_F20 },
    VirtualKey { 132, XK_F21, KEY_F21 },
    VirtualKey { 133, XK_F22, KEY_F22 },
    VirtualKey { 134, XK_F23, KEY_F23 },
    VirtualKey { 135, XK_F24, KEY_F24 },
    VirtualKey { 144, XK_Num_Lock, KEY_NUMLOCK },
    VirtualKey { 145, XK_Scroll_Lock, KEY_SCROLLLOCK },
    VirtualKey { 160, XK_Shift_L, KEY_LEFTSHIFT },
    VirtualKey { 161, XK_Shift_R, KEY_RIGHTSHIFT },
    VirtualKey { 162, XK_Control_L, KEY_LEFTCTRL },
    VirtualKey { 163, XK_Control_R, KEY_RIGHTCTRL },
    VirtualKey { 164, XK_Alt_L, KEY_LEFTALT },
    VirtualKey { 165, XK_Alt_R, KEY_RIGHTALT },
    VirtualKey { 186, XK_semicolon, KEY_SEMICOLON },
    VirtualKey { 187, XK_equal, KEY_EQUAL },
    VirtualKey { 188, XK_comma, KEY_COMMA },
    VirtualKey { 189, XK_minus, KEY_MINUS },
    VirtualKey { 190, XK_period, KEY_DOT },
    VirtualKey { 191, XK_slash, KEY_SLASH },
    VirtualKey { 192, XK_grave, KEY_GRAVE },
    VirtualKey { 219, XK_bracketleft, KEY_LEFTBRACE },
    VirtualKey { 220, XK_backslash, KEY_BACKSLASH },
    VirtualKey { 221, XK_bracketright, KEY_RIGHTBRACE },
    VirtualKey { 222, XK_apostrophe, KEY_APOSTROPHE },
    VirtualKey { 226, XK_less, KEY_102ND },
};

} // namespace

std::span<const VirtualKey> virtualKeys()
{
    return kKeys;
}

const VirtualKey* findVirtualKey(int vk)
{
    for (const auto& key : kKeys) {
        if (key.vk == vk)
            return &key;
    }
    return nullptr;
}

} // namespace ombrel::platform::linux
