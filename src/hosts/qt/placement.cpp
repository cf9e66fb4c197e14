#include "hosts/qt/placement.hpp"

#include <QGuiApplication>
#include <QScreen>
#include <QWidget>
#include <cmath>

namespace quiller::qt {
namespace {

TwipsRect twips_of(const QRect& r) {
    return {to_twips(r.x()), to_twips(r.y()), to_twips(r.width()), to_twips(r.height())};
}

}  // namespace

double twips_per_pixel() {
    const QScreen* s = QGuiApplication::primaryScreen();
    const double dpi = s ? s->logicalDotsPerInch() : 96.0;
    return 1440.0 / (dpi > 0 ? dpi : 96.0);
}

int to_pixels(int twips) {
    return static_cast<int>(std::lround(twips / twips_per_pixel()));
}

int to_twips(int pixels) {
    return static_cast<int>(std::lround(pixels * twips_per_pixel()));
}

TwipsRect primary_screen() {
    const QScreen* s = QGuiApplication::primaryScreen();
    return s ? twips_of(s->availableGeometry()) : TwipsRect{0, 0, 19200, 14400};
}

std::vector<TwipsRect> all_screens() {
    std::vector<TwipsRect> out;
    for (const QScreen* s : QGuiApplication::screens())
        out.push_back(twips_of(s->availableGeometry()));
    return out;
}

void WindowPlacement::restore(QWidget& w, const TwipsRect& defaults) {
    apply(w, keep_on_screen(load_placement(store_, key_, defaults), all_screens()));
    restored_ = true;
}

void WindowPlacement::apply(QWidget& w, const TwipsRect& r) {
    w.resize(to_pixels(r.width), to_pixels(r.height));
    w.move(to_pixels(r.left), to_pixels(r.top));
}

void WindowPlacement::save(const QWidget& w) {
    if (!restored_ ||
        (w.windowState() & (Qt::WindowMinimized | Qt::WindowMaximized | Qt::WindowFullScreen)))
        return;
    save_placement(store_, key_,
                   {to_twips(w.x()), to_twips(w.y()), to_twips(w.width()), to_twips(w.height())});
}

}  // namespace quiller::qt
