#include "hosts/win32/debug_window.hpp"

#include <commctrl.h>
#include <windowsx.h>

#include <algorithm>

#include "hosts/win32/control_ids.hpp"
#include "hosts/win32/message_loop.hpp"
#include "hosts/win32/win32_ui.hpp"
#include "os/win32/win32_platform.hpp"

namespace quiller::win32 {
namespace {

constexpr std::string_view kName = "DebugForm";
constexpr int kDebugButtonWidth = 1095;  // four buttons side by side under the listing
constexpr int kSplitterWidth = 75;
constexpr UINT kSplitterMoved = WM_APP + 1;  // wParam: the bar's x in the parent's client area
constexpr wchar_t kSplitterClass[] = L"QuillerSplitter";

// `picSplitter`: a bar that follows the mouse while its button is held and tells its parent.
LRESULT CALLBACK splitter_procedure(HWND h, UINT msg, WPARAM w, LPARAM l) {
    switch (msg) {
        case WM_SETCURSOR:
            SetCursor(LoadCursorW(nullptr, MAKEINTRESOURCEW(32644)));
            return TRUE;
        case WM_LBUTTONDOWN:
            SetCapture(h);
            return 0;
        case WM_LBUTTONUP:
            ReleaseCapture();
            return 0;
        case WM_MOUSEMOVE:
            if (GetCapture() == h) {
                POINT p{GET_X_LPARAM(l), GET_Y_LPARAM(l)};
                MapWindowPoints(h, GetParent(h), &p, 1);
                SendMessageW(GetParent(h), kSplitterMoved, static_cast<WPARAM>(p.x), 0);
            }
            return 0;
        default:
            return DefWindowProcW(h, msg, w, l);
    }
}

void register_splitter() {
    static const bool done = [] {
        WNDCLASSW wc{};
        wc.lpfnWndProc = splitter_procedure;
        wc.hInstance = GetModuleHandleW(nullptr);
        wc.hCursor = LoadCursorW(nullptr, MAKEINTRESOURCEW(32644));
        wc.hbrBackground = reinterpret_cast<HBRUSH>(COLOR_BTNFACE + 1);
        wc.lpszClassName = kSplitterClass;
        return RegisterClassW(&wc) != 0;
    }();
    (void)done;
}

int button_id(int index) {
    return ids::kStepButton + index;
}

}  // namespace

void DebugWindow::load(const DebugView& view) {
    if (loaded()) return;
    register_splitter();
    create(view.caption, true);
    const TwipsRect r =
        load_placement(c_.settings, placement_key(kName), debug_default(primary_screen_twips()));
    place_window_twips(hwnd(), keep_on_screen(r, screens_twips()));
    listing_.clear();
}

void DebugWindow::build() {
    HWND h = hwnd();
    make_control(h, L"STATIC", "", SS_NOPREFIX, ids::kNumLabel, font());
    make_control(h, L"STATIC", "", SS_NOPREFIX | SS_LEFTNOWORDWRAP, ids::kLineLabel, font());
    make_control(h, L"STATIC", "", SS_NOPREFIX | SS_LEFTNOWORDWRAP, ids::kCodeLabel, font());
    make_control(h, L"LISTBOX", "",
                 LBS_NOINTEGRALHEIGHT | LBS_NOTIFY | WS_VSCROLL | WS_HSCROLL | WS_TABSTOP,
                 ids::kPrgList, font(), WS_EX_CLIENTEDGE);
    make_control(h, kSplitterClass, "", 0, ids::kSplitter, font());
    HWND vars =
        make_control(h, WC_LISTVIEWW, "",
                     LVS_REPORT | LVS_SINGLESEL | LVS_SHOWSELALWAYS | LVS_NOSORTHEADER | WS_TABSTOP,
                     ids::kVariables, font(), WS_EX_CLIENTEDGE);
    ListView_SetExtendedListViewStyle(vars, LVS_EX_FULLROWSELECT | LVS_EX_DOUBLEBUFFER);
    LVCOLUMNW column{};
    column.mask = LVCF_TEXT | LVCF_WIDTH;
    column.pszText = const_cast<wchar_t*>(L"Variables");
    column.cx = 200;
    SendMessageW(vars, LVM_INSERTCOLUMNW, 0, reinterpret_cast<LPARAM>(&column));
    make_control(h, L"BUTTON", "&Step", BS_DEFPUSHBUTTON | WS_TABSTOP, button_id(0), font());
    make_control(h, L"BUTTON", "&Continue", BS_PUSHBUTTON | WS_TABSTOP, button_id(2), font());
    make_control(h, L"BUTTON", "&Terminate", BS_PUSHBUTTON | WS_TABSTOP, button_id(1), font());
    make_control(h, L"BUTTON", "&Edit", BS_PUSHBUTTON | WS_TABSTOP, ids::kEditButton, font());
    make_control(h, L"BUTTON", "&Reference", BS_PUSHBUTTON | WS_TABSTOP, ids::kReferenceButton,
                 font());
    make_control(h, L"BUTTON", "&About", BS_PUSHBUTTON | WS_TABSTOP, ids::kDebugAboutButton,
                 font());
    HWND state = make_control(h, L"STATIC", model_.state(), SS_NOPREFIX, ids::kStateLabel, font());
    ShowWindow(state, SW_HIDE);
    set_default_button(button_id(0));
}

void DebugWindow::layout(int width, int height) {
    const int line = px_to_twips(line_height(hwnd(), font()), dpi()) + 30;
    place_twips(item(ids::kNumLabel), {kMargin, kMargin, 600, line}, dpi());
    place_twips(item(ids::kLineLabel), {kMargin + 660, kMargin, width - 2 * kMargin - 660, line},
                dpi());
    place_twips(item(ids::kCodeLabel),
                {kMargin + 660, kMargin + line, width - 2 * kMargin - 660, line}, dpi());
    const int lists_top = kMargin + 2 * line + 90;
    const int buttons_top = height - kMargin - kButtonHeight;
    const int lists_height = std::max(buttons_top - kMargin - lists_top, 300);
    const int inner = width - 2 * kMargin - kSplitterWidth;
    const int list_width =
        std::clamp(static_cast<int>(inner * split_), 600, std::max(inner - 600, 600));
    place_twips(item(ids::kPrgList), {kMargin, lists_top, list_width, lists_height}, dpi());
    place_twips(item(ids::kSplitter),
                {kMargin + list_width, lists_top, kSplitterWidth, lists_height}, dpi());
    const int vars_left = kMargin + list_width + kSplitterWidth;
    place_twips(item(ids::kVariables),
                {vars_left, lists_top, width - kMargin - vars_left, lists_height}, dpi());
    RECT vars{};
    GetClientRect(item(ids::kVariables), &vars);
    ListView_SetColumnWidth(item(ids::kVariables), 0, std::max<LONG>(vars.right, 100));
    // Step, Continue, Terminate on the left; Edit, Reference, About on the right.
    int left = kMargin;
    for (int id : {button_id(0), button_id(2), button_id(1)}) {
        place_twips(item(id), {left, buttons_top, kDebugButtonWidth, kButtonHeight}, dpi());
        left += kDebugButtonWidth + 90;
    }
    int right = width - kMargin;
    for (int id : {ids::kDebugAboutButton, ids::kReferenceButton, ids::kEditButton}) {
        right -= kDebugButtonWidth;
        place_twips(item(id), {right, buttons_top, kDebugButtonWidth, kButtonHeight}, dpi());
        right -= 90;
    }
}

void DebugWindow::fill(const DebugView& view) {
    HWND list = item(ids::kPrgList);
    if (view.listing && *view.listing != listing_) {
        listing_ = *view.listing;
        SendMessageW(list, WM_SETREDRAW, FALSE, 0);
        SendMessageW(list, LB_RESETCONTENT, 0, 0);
        for (const std::string& entry : listing_)
            SendMessageW(list, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(widen(entry).c_str()));
        SendMessageW(list, WM_SETREDRAW, TRUE, 0);
    }
    HWND vars = item(ids::kVariables);
    SendMessageW(vars, WM_SETREDRAW, FALSE, 0);
    ListView_DeleteAllItems(vars);
    for (std::size_t i = 0; i < view.variables.size(); ++i) {
        std::wstring text = widen(view.variables[i]);
        LVITEMW it{};
        it.mask = LVIF_TEXT;
        it.iItem = static_cast<int>(i);
        it.pszText = text.data();
        SendMessageW(vars, LVM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(&it));
    }
    SendMessageW(vars, WM_SETREDRAW, TRUE, 0);
    set_text(item(ids::kNumLabel), model_.num_label());
    set_text(item(ids::kLineLabel), model_.line_label());
    set_text(item(ids::kCodeLabel), model_.code_label());
    // The current line selected and in view.
    const int row = model_.selected_row();
    const int rows = static_cast<int>(listing_.size());
    RECT r{};
    GetClientRect(list, &r);
    const int item_height =
        std::max<int>(static_cast<int>(SendMessageW(list, LB_GETITEMHEIGHT, 0, 0)), 1);
    const int top = static_cast<int>(SendMessageW(list, LB_GETTOPINDEX, 0, 0));
    SendMessageW(list, LB_SETCURSEL, static_cast<WPARAM>(row), 0);
    SendMessageW(list, LB_SETTOPINDEX,
                 static_cast<WPARAM>(DebugModel::top_row(row, r.bottom / item_height, top, rows)),
                 0);
}

DebugAction DebugWindow::stop(const DebugView& view) {
    load(view);
    if (!loaded()) return DebugAction::Continue;
    set_text(hwnd(), view.caption);
    c_.script_file = view.script_file;
    model_.show(view);
    fill(view);
    if (!IsWindowVisible(hwnd())) show();
    set_text(item(ids::kStateLabel), "Wait");
    const EventWait wait{[] { pump_messages(); },
                         [this](int ms) {
                             if (c_.end_requested) {
                                 c_.end_requested = false;
                                 throw EndProgram{0};
                             }
                             MsgWaitForMultipleObjects(0, nullptr, FALSE, static_cast<DWORD>(ms),
                                                       QS_ALLINPUT);
                         }};
    return model_.wait(wait);
}

void DebugWindow::press(int index) {
    model_.press(index);
    set_text(item(ids::kStateLabel), model_.state());
    save_placement_now();
}

bool DebugWindow::command(int id, int code) {
    if (code != BN_CLICKED) return false;
    if (id >= ids::kStepButton && id <= ids::kContinueButton) {
        press(id - ids::kStepButton);
    } else if (id == ids::kEditButton) {
        open_in_notepad(c_, c_.script_file);
    } else if (id == ids::kReferenceButton) {
        c_.processes.open_document(c_.program_folder + "\\readme-quiller.htm", "open");
    } else if (id == ids::kDebugAboutButton) {
        show_about(c_, hwnd());
    } else {
        return false;
    }
    return true;
}

// The close box lets the script run on, as Continue does.
void DebugWindow::close_box() {
    press(debug_button::kContinue);
    hide();
}

bool DebugWindow::message(UINT msg, WPARAM w, LPARAM, INT_PTR& result) {
    if (msg != kSplitterMoved) return false;
    RECT r{};
    GetClientRect(hwnd(), &r);
    const int margin = twips_to_px(kMargin, dpi());
    const int inner = r.right - 2 * margin - twips_to_px(kSplitterWidth, dpi());
    if (inner > 0) {
        split_ = std::clamp(static_cast<double>(static_cast<int>(w) - margin) / inner, 0.1, 0.9);
        relayout();
    }
    result = 0;
    return true;
}

void DebugWindow::save_placement_now() {
    if (loaded() && normal_state(hwnd()) && IsWindowVisible(hwnd()))
        save_placement(c_.settings, placement_key(kName), window_twips(hwnd()));
}

void DebugWindow::save_and_unload() {
    save_placement_now();
    unload();
}

}  // namespace quiller::win32
