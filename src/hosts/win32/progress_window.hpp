// `frmPopup` and `frmProgress`, the progress windows: `lblTitle`, `txtInfo`, `txtProgress`, the
// bar `CopyBar` with its centred percent, `lblTime` and `cmdCancel`. One view serves both; the
// progress model decides the texts and what Cancel does.
#pragma once

#include <string>

#include "hosts/win32/dialog.hpp"
#include "hosts/win32/host_context.hpp"
#include "ui/progress_model.hpp"

namespace quiller::win32 {

class ProgressWindowView final : public Dialog {
  public:
    ProgressWindowView(HostContext& c, ProgressWindow kind) : c_(c), kind_(kind) {}
    ~ProgressWindowView() override { close(); }

    // `frmProgress`'s `StartTimer`: shown with its title.
    void start(std::string_view title);
    // Shows what the model holds (loading and placing the window on first use).
    void update(const ProgressModel& m);
    void close();
    // `frmProgress`: Cancel was pressed (its tag reads "Cancel").
    bool cancelled() const { return cancelled_; }

  private:
    void load(const ProgressModel* m);
    void build() override;
    void layout(int width, int height) override;
    bool command(int id, int code) override;
    void close_box() override {}  // the work closes the window
    void escape() override {}
    bool message(UINT msg, WPARAM w, LPARAM l, INT_PTR& result) override;
    TwipsRect min_size() const override { return {0, 0, 3600, 1800}; }
    void draw_bar(const DRAWITEMSTRUCT& d) const;
    void cancel();

    HostContext& c_;
    ProgressWindow kind_;
    ProgressModel shown_;  // the texts on screen, and what Cancel acts on
    bool cancelled_ = false;
};

}  // namespace quiller::win32
