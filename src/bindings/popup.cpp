// `popup TITLE [INFO] [PROGRESS] [LEFT TOP WIDTH HEIGHT] {cancel}`: the small progress window
// with three lines of text, placed by shares of the screen (0.25 is a quarter of its width or
// height); Cancel, shown with "cancel", ends the program. Without a title the window closes.
#include "engine/engine.hpp"
#include "bindings/dircopy.hpp"
#include "value/value.hpp"

namespace quiller::statements {

void popup(Engine& e) {
    const Slots& s = e.slots();
    if (s[1].empty()) return e.host().popup_close();
    ProgressModel m;
    m.window = ProgressWindow::Popup;
    m.title = s[1];
    m.info = s[2];
    m.progress_text = s[3];
    m.cancel_visible = e.has_option("cancel");
    for (int k = 0; k < 4; ++k)
        if (!s[4 + k].empty()) m.placement[k] = value::parse_locale_number(s[4 + k]);
    e.host().popup_show(m);
    e.host().process_events();
}

}  // namespace quiller::statements
