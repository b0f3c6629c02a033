#include <QApplication>
#include <QLocale>
#include <QMessageBox>
#include <QQuickWindow>
#include <QSessionManager>
#include <QtPlugin>
#include <algorithm>
#include <array>
#include <cstdlib>
#include <span>
#include <string_view>

#include <fmt/format.h>

#include "Base/BuildInformation.h"
#include "Base/Environment.h"
#include "Screens/Window/Application.h"
#include "Screens/Window/TerminationSignals.h"

// Its types are known to QML by name.
Q_IMPORT_PLUGIN(VelloranPlugin)

namespace {

constexpr std::string_view help =
    "Usage: velloran [--hidden | --at-login]\n"
    "\n"
    "Records what you work on, and opens the window in which you review and bill it.\n"
    "\n"
    "  --hidden    record without opening the window\n"
    "  --at-login  as at login: open the window only where the settings say so\n"
    "  --help      print this\n"
    "  --version   print the version\n"
    "\n"
    "The same from a terminal: velloran-cli.\n";

constexpr int wrongUsage = 2;

bool hasDisplay()
{
    return std::ranges::any_of(std::to_array({"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"}),
                               [](const char* name) { return !qEnvironmentVariableIsEmpty(name); });
}

} // namespace

int main(int argumentCount, char** argumentTexts)
{
    using namespace stintbook;
    const std::span arguments(argumentTexts, static_cast<std::size_t>(argumentCount));
    const auto isAskedFor = [&](std::string_view option) {
        return std::ranges::any_of(arguments.subspan(1),
                                   [&](std::string_view text) { return text == option; });
    };
    if (isAskedFor("--help")) {
        fmt::print("{}", help);
        return EXIT_SUCCESS;
    }
    if (isAskedFor("--version")) {
        fmt::print("velloran {}\n", version());
        return EXIT_SUCCESS;
    }
    if (!hasDisplay()) {
        fmt::print(stderr, "Velloran needs a display. From a terminal alone, use velloran-cli.\n");
        return EXIT_FAILURE;
    }

    // Right everywhere, and a fifth of the memory that a graphics driver takes.
    if (qEnvironmentVariableIsEmpty("QSG_RHI_BACKEND"))
        QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
    QApplication qt(argumentCount, argumentTexts);
    QApplication::setLayoutDirection(QLocale().textDirection());
    QApplication::setApplicationName(QStringLiteral("velloran"));
    QApplication::setApplicationDisplayName(QStringLiteral("Velloran"));
    QApplication::setApplicationVersion(QString::fromUtf8(version().data(), qsizetype(version().size())));
    QApplication::setDesktopFileName(QStringLiteral("app.velloran.Velloran"));
    // What the toolkit takes for itself is gone from the arguments by now.
    const auto rest = QApplication::arguments().mid(1);
    const QStringList known{QStringLiteral("--hidden"), QStringLiteral("--at-login")};
    if (std::ranges::any_of(rest, [&](const QString& text) { return !known.contains(text); })) {
        fmt::print(stderr, "{}", help);
        return wrongUsage;
    }

    Application application(processEnvironment());
    switch (application.start()) {
    case AppEnvironment::Launch::handedOver:
        return EXIT_SUCCESS;
    case AppEnvironment::Launch::refused:
        // Nothing else would show that it was started.
        if (rest.isEmpty())
            QMessageBox::information(nullptr, QApplication::applicationDisplayName(),
                                     application.openingProblem());
        return EXIT_FAILURE;
    case AppEnvironment::Launch::going:
        break;
    }
    const TerminationSignals signals([] { QApplication::quit(); });
    // The session ends, and its desktop starts this again at login if its user wants that.
    QObject::connect(&qt, &QGuiApplication::commitDataRequest, &qt, [](QSessionManager& session) {
        session.setRestartHint(QSessionManager::RestartNever);
        QMetaObject::invokeMethod(qApp, [] { QApplication::quit(); }, Qt::QueuedConnection);
    });
    if (rest.isEmpty())
        application.showWindow();
    else if (rest.contains(QStringLiteral("--at-login")))
        application.showAsAtLogin();
    QApplication::exec();
    return application.shutdown() ? EXIT_SUCCESS : EXIT_FAILURE;
}
