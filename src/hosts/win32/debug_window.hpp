// `DebugForm`, the step debugger: the listing `PrgList`, the variables in a list view, the
// splitter `picSplitter` between them, the labels of the current line, `StepButton` (Step,
// Terminate, Continue), `cmdEdit`, `cmdReference` and `AboutButton`. The handshake with the
// waiting interpreter and the listing's scrolling are the debugger model's.
#pragma once

#include <string>
#include <vector>

#include "hosts/win32/dialog.hpp"
#include "hosts/win32/host_context.hpp"
#include "ui/debug_model.hpp"
#include "ui/host.hpp"

namespace quiller::win32 {

class DebugWindow final : public Dialog {
  public:
    explicit DebugWindow(HostContext& c) : c_(c) {}
    ~DebugWindow() override { save_and_unload(); }

    // Shows the stop and waits (pumping messages every 100 ms at most) for the user's choice.
    DebugAction stop(const DebugView& view);
    void save_and_unload();

  private:
    void build() override;
    void layout(int width, int height) override;
    bool command(int id, int code) override;
    void close_box() override;
    void escape() override {}  // Esc must not let a script run on
    bool message(UINT msg, WPARAM w, LPARAM l, INT_PTR& result) override;
    TwipsRect min_size() const override { return {0, 0, 6000, 3600}; }
    void load(const DebugView& view);
    void fill(const DebugView& view);
    void press(int index);
    void save_placement_now();

    HostContext& c_;
    DebugModel model_;
    std::vector<std::string> listing_;  // what PrgList shows
    double split_ = 0.6;                // the listing's share of the width
    bool dragging_ = false;
    int drag_width_ = 0;  // the client width in pixels while dragging
};

}  // namespace quiller::win32
