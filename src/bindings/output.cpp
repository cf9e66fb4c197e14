// The output window: the statements `print`, `printtofile`, `printwindow`, `pause`. They work
// on the engine's output model; the host shows it.
#include "bindings/output.hpp"

#include <cmath>

#include "engine/engine.hpp"
#include "engine/failure.hpp"
#include "engine/registry_engine.hpp"
#include "ui/event_wait.hpp"
#include "value/value.hpp"

namespace quiller::statements {
namespace {

// The output window's placement in the registry.
constexpr std::string_view kDisplayFormKey = "HKEY_CURRENT_USER\\Software\\Quiller\\DisplayForm";

// A whole number as the window statements convert their arguments (rounded half to even, 32-bit).
int whole_number(std::string_view text) {
    const std::optional<double> v = value::parse_locale_number(text);
    if (!v) throw failures::type_mismatch();
    const double rounded = std::nearbyint(*v);
    if (rounded < -2147483648.0 || rounded > 2147483647.0) throw failures::overflow();
    return static_cast<int>(rounded);
}

// The modal part of `ShowOutput`: a hidden window shows the message as its title too, and
// returns to its former visibility afterwards.
void show_modal(Engine& e, std::string_view message) {
    OutputModel& out = e.output();
    out.set_visible(e.host().output_visible(out));
    const bool was_visible = out.begin_modal(message);
    e.host().output_pause(out, message);
    out.end_modal(was_visible);
}

void timed_pause(Engine& e, std::string_view message, int seconds) {
    OutputModel& out = e.output();
    Clock& clock = *e.platform().clock;
    if (!out.loaded()) {
        out.show({}, message, false, false);
        out.set_visible(true);
    }
    e.host().output_notice(out, message);
    // The windows stay alive while the pause sleeps.
    const EventWait wait{[&] { e.host().process_events(); }, [&](int ms) { clock.sleep_ms(ms); }};
    if (seconds < OutputModel::kCountdownFrom) {
        if (seconds > 0) wait_with_events(wait, seconds * 1000);
        return;
    }
    const std::string caption = out.caption();
    e.host().output_dismissed();  // forget an earlier OK
    for (int n = seconds; n >= 1; --n) {
        out.set_caption(OutputModel::countdown_caption(n, caption));
        e.host().output_refresh(out);
        if (wait_with_events(wait, 1000, [&] { return e.host().output_dismissed(); })) break;
    }
    out.set_caption(caption);
    out.set_ok_enabled(true);
    e.host().output_refresh(out);
}

}  // namespace

void print(Engine& e) {
    const Slots& s = e.slots();
    OutputModel& out = e.output();
    out.show(s[2], s[1], e.has_option("clear"), e.has_option("insert"));
    out.set_visible(true);
    e.host().output_printed(out, s[1]);
}

void printtofile(Engine& e) {
    auto file = e.platform().files->open(e.slots()[1], OpenMode::Write);
    if (!file) throw failures::system(file.error().shown());
    const Status written = (*file)->write(e.output().file_image(kLineBreak));
    const Status closed = (*file)->close();
    if (!written || !closed) throw failures::path_access_error();
}

// `printwindow left top width height` (twips). The placement is stored for the output window
// first, value by value, so values written before a bad number stay written.
void printwindow(Engine& e) {
    const Slots& s = e.slots();
    RegistryOperations registry = registry_operations(e);
    const auto store = [&](std::string_view name, std::string_view text) {
        const int n = whole_number(text);
        registry.write_reg(kDisplayFormKey, name, std::to_string(n), "REG_SZ");
        return n;
    };
    const int top = store("Top", s[2]);
    const int height = store("Height", s[4]);
    const int left = store("Left", s[1]);
    const int width = store("Width", s[3]);
    e.host().output_place(left, top, width, height);
}

// `pause [message] [seconds]`.
void pause(Engine& e) {
    const Slots& s = e.slots();
    if (!s[2].empty()) return timed_pause(e, s[1], whole_number(s[2]));
    const std::string message = s[1].empty() ? std::string("Press OK to continue") : s[1];
    e.output().show({}, message, false, false);
    show_modal(e, message);
}

}  // namespace quiller::statements
