// A host program: converts the recordings named on the command line into the current directory.
#include <zucmtrlib.h>

#include <QCoreApplication>
#include <QTextStream>

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    QTextStream out(stdout);
    unsigned int device = 0;
    ZuCmtrSetLogFilePath(QStringLiteral("zucmtr.log"));
    ZuCmtrConverterInit();
    if (!ZuCmtrLoadFromIniDefault(QStringLiteral("ZuDrv.ini"), QStringLiteral("Default")) ||
        !ZuCmtrLoadFromIni(QStringLiteral("ZuDrv.ini"), QStringLiteral("Vostochnaya"), &device)) {
        out << "bad ZuDrv.ini, see zucmtr.log: " << ZuCmtrGetLastError() << '\n';
        return 1;
    }
    for (const QString& recording : app.arguments().mid(1)) {
        if (!ZuCmtrConvertToComtrade(recording, QStringLiteral("."), device))
            out << recording << ": " << ZuCmtrGetDevLastError(device) << '\n';
        while (ZuCmtrGetDevMsgCount(device) > 0)
            out << ZuCmtrPopDevMessage(device) << '\n';
    }
    ZuCmtrConverterExit();
    return 0;
}
