#include "platform/runtime.h"
#include "shared/statf.h"

#include <QApplication>

int main(int argc, char* argv[])
{
    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("Glidepath"));
    platform::Runtime runtime;
    platform::runHandler([] {
        auto& status = platform::form<StatF>();
        status.Info.setCaption(QStringLiteral("Glidepath 2.0"));
        status.Show();
    });
    return app.exec();
}
