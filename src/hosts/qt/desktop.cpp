#include "hosts/qt/desktop.hpp"

#include <QDesktopServices>
#include <QFile>
#include <QProcess>
#include <QStandardPaths>
#include <QUrl>

namespace quiller::qt {
namespace {

// The Exec line of the default plain-text application's desktop entry; empty when unknown.
QString text_editor_command() {
    QProcess query;
    query.start("xdg-mime", {"query", "default", "text/plain"});
    if (!query.waitForFinished(3000)) return {};
    const QString id = QString::fromLocal8Bit(query.readAllStandardOutput()).trimmed();
    const QString entry = QStandardPaths::locate(QStandardPaths::ApplicationsLocation, id);
    QFile file(entry);
    if (id.isEmpty() || !file.open(QIODevice::ReadOnly | QIODevice::Text)) return {};
    bool in_entry = false;
    while (!file.atEnd()) {
        const QString line = QString::fromUtf8(file.readLine()).trimmed();
        if (line.startsWith('['))
            in_entry = line == "[Desktop Entry]";
        else if (in_entry && line.startsWith("Exec="))
            return line.mid(5);
    }
    return {};
}

}  // namespace

void edit_in_text_editor(const std::string& path) {
    const QString file = QString::fromStdString(path);
    QStringList args = QProcess::splitCommand(text_editor_command());
    bool placed = false;
    for (QString& a : args) {
        for (const char* code : {"%f", "%F", "%u", "%U"}) {
            if (!a.contains(code)) continue;
            a.replace(code, file);
            placed = true;
        }
    }
    args.removeIf([](const QString& a) { return a.size() == 2 && a.startsWith('%'); });
    if (!placed) args << file;
    if (args.size() > 1 && QProcess::startDetached(args.front(), args.mid(1))) return;
    QDesktopServices::openUrl(QUrl::fromLocalFile(file));
}

}  // namespace quiller::qt
