// `DisplayForm`, the output window: `TitleLabel`, the read-only `OutputText`, `OKButton`,
// `OpenButton` (the text in Notepad) and `cmdAbout`. It shows the output model; the rules of
// printing and pausing live there.
#pragma once

#include <string>

#include "hosts/win32/dialog.hpp"
#include "hosts/win32/host_context.hpp"
#include "ui/output_model.hpp"

namespace quiller::win32 {

class OutputWindow final : public Dialog {
  public:
    explicit OutputWindow(HostContext& c) : c_(c) {}
    ~OutputWindow() override { save_and_unload(); }

    // Loads the window (placement from the store) and shows what the model holds.
    void update(const OutputModel& m);
    // Shows the window (modeless) and activates it.
    void present() {
        placed_ = true;
        show();
    }
    // True once OK was pressed since the last call.
    bool take_ok() {
        const bool pressed = ok_pressed_;
        ok_pressed_ = false;
        return pressed;
    }
    // `printwindow`: moves and sizes the window (twips).
    void place(const TwipsRect& r);
    // Unloads the window, storing its placement when it is in the normal state.
    void save_and_unload();

  private:
    void build() override;
    void layout(int width, int height) override;
    bool command(int id, int code) override;
    void close_box() override;
    void escape() override;
    TwipsRect min_size() const override { return {0, 0, 4200, 2400}; }
    void load(const OutputModel& m);
    void show_text(const OutputModel& m);
    void open_in_editor();

    HostContext& c_;
    const OutputModel* model_ = nullptr;
    // What the edit control holds: the model's text up to this size, which ended in this tail.
    // A print that only appends is added at the end instead of replacing everything.
    std::size_t shown_size_ = 0;
    std::string shown_tail_;
    bool placed_ = false;  // the window was laid out and shown: its placement is worth keeping
    bool ok_pressed_ = false;
};

}  // namespace quiller::win32
