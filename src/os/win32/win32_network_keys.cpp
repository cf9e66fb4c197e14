// Keystrokes through SendInput. The modifiers are pressed around each key; a character is typed
// as Unicode input, or, while a modifier is held, as the key that gives it on this keyboard.
#include <utility>

#include "os/win32/win32_network.hpp"
#include "os/win32/win32_platform.hpp"

namespace quiller::win32 {
namespace {

constexpr std::pair<std::uint8_t, WORD> kModifierKeys[] = {
    {kKeyShift, VK_SHIFT}, {kKeyControl, VK_CONTROL}, {kKeyAlt, VK_MENU}};

// Keys of the extended set (the grey keys beside the main block).
bool is_extended(WORD vk) {
    return (vk >= VK_PRIOR && vk <= VK_DOWN) || vk == VK_INSERT || vk == VK_DELETE ||
           vk == VK_NUMLOCK || vk == VK_DIVIDE || vk == VK_SNAPSHOT;
}

class InputList {
  public:
    void key(WORD vk, bool up) {
        INPUT in{};
        in.type = INPUT_KEYBOARD;
        in.ki.wVk = vk;
        in.ki.dwFlags = (up ? KEYEVENTF_KEYUP : 0) | (is_extended(vk) ? KEYEVENTF_EXTENDEDKEY : 0);
        inputs_.push_back(in);
    }
    void press(WORD vk) {
        key(vk, false);
        key(vk, true);
    }
    // A character beyond the basic plane goes as its two surrogates.
    void type(char32_t c) {
        if (c > 0xFFFF) {
            c -= 0x10000;
            unit(static_cast<wchar_t>(0xD800 + (c >> 10)));
            unit(static_cast<wchar_t>(0xDC00 + (c & 0x3FF)));
        } else {
            unit(static_cast<wchar_t>(c));
        }
    }
    std::vector<INPUT>& inputs() { return inputs_; }

  private:
    void unit(wchar_t c) {
        for (DWORD up : {DWORD{0}, DWORD{KEYEVENTF_KEYUP}}) {
            INPUT in{};
            in.type = INPUT_KEYBOARD;
            in.ki.wScan = c;
            in.ki.dwFlags = KEYEVENTF_UNICODE | up;
            inputs_.push_back(in);
        }
    }

    std::vector<INPUT> inputs_;
};

void add_stroke(InputList& list, const KeyStroke& k) {
    WORD vk = k.virtual_key;
    std::uint8_t modifiers = k.modifiers;
    if (!vk && modifiers && k.character <= 0xFFFF) {
        // The key and the shift state (1 Shift, 2 Ctrl, 4 Alt) that give the character.
        const SHORT scan = VkKeyScanW(static_cast<wchar_t>(k.character));
        if (scan != -1) {
            vk = LOBYTE(scan);
            modifiers |= HIBYTE(scan) & (kKeyShift | kKeyControl | kKeyAlt);
        }
    }
    for (const auto& [bit, key] : kModifierKeys)
        if (modifiers & bit) list.key(key, false);
    if (vk)
        list.press(vk);
    else
        list.type(k.character);
    for (auto it = std::rbegin(kModifierKeys); it != std::rend(kModifierKeys); ++it)
        if (modifiers & it->first) list.key(it->second, true);
}

}  // namespace

std::string send_key_strokes(std::span<const KeyStroke> keys) {
    InputList list;
    for (const KeyStroke& k : keys) add_stroke(list, k);
    std::vector<INPUT>& inputs = list.inputs();
    if (inputs.empty()) return {};
    const UINT sent = SendInput(static_cast<UINT>(inputs.size()), inputs.data(), sizeof(INPUT));
    if (sent == inputs.size()) return {};
    // Input blocked by a window of higher integrity leaves no error code of its own.
    const DWORD code = GetLastError();
    return system_error(code ? code : ERROR_ACCESS_DENIED).shown();
}

}  // namespace quiller::win32
