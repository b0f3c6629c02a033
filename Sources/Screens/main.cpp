#include <QApplication>
#include <QQuickWindow>
#include <QtPlugin>
#include <cstdlib>

#include "Base/Environment.h"
#include "Screens/Window/Application.h"

// Its types are known to QML by name.
Q_IMPORT_PLUGIN(VelloranPlugin)

int main(int argumentCount, char** arguments)
{
    using namespace stintbook;
    // Right everywhere, and a fifth of the memory that a graphics driver takes.
    if (qEnvironmentVariableIsEmpty("QSG_RHI_BACKEND"))
        QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
    QApplication qt(argumentCount, arguments);
    QApplication::setApplicationName(QStringLiteral("velloran"));
    QApplication::setApplicationDisplayName(QStringLiteral("Velloran"));
    QApplication::setDesktopFileName(QStringLiteral("app.velloran.Velloran"));

    Application application(processEnvironment());
    if (!application.start())
        return EXIT_SUCCESS;
    application.showWindow();
    QApplication::exec();
    return application.shutdown() ? EXIT_SUCCESS : EXIT_FAILURE;
}
