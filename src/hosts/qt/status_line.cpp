#include "hosts/qt/status_line.hpp"

#include <QLabel>

namespace quiller::qt {

QLabel* status_line(const char* name) {
    auto* l = new QLabel;
    l->setObjectName(name);
    l->setTextFormat(Qt::PlainText);
    l->setTextInteractionFlags(Qt::TextSelectableByMouse);
    l->setMinimumWidth(1);  // long paths must not widen the window
    return l;
}

}  // namespace quiller::qt
