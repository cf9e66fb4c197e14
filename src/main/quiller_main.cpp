// quiller: runs a .prg script with the desktop windows; without a display, as quillerc does.
#include <QApplication>
#include <QDir>
#include <QFileInfo>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "bindings/language.hpp"
#include "engine/engine.hpp"
#include "hosts/common/registry_settings.hpp"
#include "hosts/console/console_host.hpp"
#include "hosts/qt/desktop.hpp"
#include "hosts/qt/qt_host.hpp"
#include "main/command_line.hpp"
#include "version.hpp"

namespace {

bool has_env(const char* name) {
    const char* v = std::getenv(name);
    return v && *v;
}

// A display to show windows on: X11, Wayland, or a Qt platform chosen explicitly.
bool display_available() {
    return has_env("DISPLAY") || has_env("WAYLAND_DISPLAY") || has_env("QT_QPA_PLATFORM");
}

// readme-quiller.htm beside the program, or where `cmake --install` puts the documentation.
std::string reference_file() {
    const QDir dir(QCoreApplication::applicationDirPath());
    for (const QString& candidate : {dir.filePath("readme-quiller.htm"),
                                     dir.filePath("../share/doc/quiller/readme-quiller.htm")}) {
        if (QFileInfo::exists(candidate)) return QDir::cleanPath(candidate).toStdString();
    }
    return dir.filePath("readme-quiller.htm").toStdString();
}

}  // namespace

int main(int argc, char** argv) {
    // The command line is the script's: Qt sees none of it.
    const std::string command_line = quiller::join_command_line(argc, argv);
    quiller::Platform platform = quiller::make_platform();
    if (!display_available()) {
        std::fputs(
            "quiller: no display (DISPLAY and WAYLAND_DISPLAY are not set); running the "
            "script on the console as quillerc does\n",
            stderr);
        quiller::ConsoleHost console(stdout, stderr, stdin);
        quiller::Engine engine(console, platform, quiller::standard_language());
        return engine.run(command_line);
    }

    int qt_argc = 1;
    char* qt_argv[] = {argv[0], nullptr};
    QApplication app(qt_argc, qt_argv);
    QApplication::setApplicationName("Quiller");
    QApplication::setOrganizationName("Corvale");
    QApplication::setDesktopFileName("quiller");
    QApplication::setQuitOnLastWindowClosed(false);  // the run decides when it ends

    quiller::RegistrySettings settings(*platform.registry);
    quiller::qt::DesktopServices desktop;
    desktop.temp_text_file = [&platform] {
        std::string name = platform.files->temp_file_name("qlr", false);
        if (name.size() > 4) name.replace(name.size() - 4, 4, ".txt");
        return name;
    };
    desktop.open_document = [&platform](const std::string& file) {
        platform.processes->open_document(file, "open");
    };
    desktop.edit_file = quiller::qt::edit_in_text_editor;
    desktop.reference_file = reference_file();
    const std::string version = std::to_string(quiller::kVersionMajor) + "." +
                                std::to_string(quiller::kVersionMinor) + "." +
                                std::to_string(quiller::kVersionRevision);
    quiller::qt::QtHost host(settings, version, desktop);
    quiller::Engine engine(host, platform, quiller::standard_language());
    const int status = engine.run(command_line);
    host.close_all();
    return status;
}
