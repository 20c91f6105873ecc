#include "workbench/window/Application.h"

#include "platform/ResourceChain.h"
#include "workbench/messages/Failure.h"

#include <QFontInfo>
#include <QLibraryInfo>

#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <string>

// Why the platform does not start: the first that it complains about.
static std::string platformComplaint;

// While Qt starts: ends the process in one line where it would abort in many. Its other messages
// about the environment are of no use to anybody.
static void hearStart(QtMsgType type, const QMessageLogContext& context, const QString& text) {
    if (type == QtFatalMsg) {
        std::fprintf(stderr,
                     "fendra: no window can be opened (%s); check the display, or work without a "
                     "window: see fendra --help\n",
                     platformComplaint.c_str());
        std::_Exit(1);
    }
    if (platformComplaint.empty() && QByteArray(context.category).startsWith("qt.qpa.")) {
        platformComplaint = text.toStdString();
    }
}

// The count, once what Qt may say while it takes it is heard.
static int& listening(int& count) {
    qInstallMessageHandler(hearStart);
    return count;
}

Application::Application() : application(listening(argumentCount), arguments) {
    qInstallMessageHandler(nullptr);
    if (QFontInfo(QApplication::font()).family().isEmpty()) {
        throw Failure("there is no font to write in a window with; install fonts-dejavu-core");
    }
    // Qt has set the user's locale. Numbers of the module and of files have a decimal point in any.
    std::setlocale(LC_NUMERIC, "C");
    // Dialog templates leave room for plain controls, which a style of the user's need not have.
    QApplication::setStyle("Fusion");
    // Where Qt's translations are not installed, its menus stay English.
    const unsigned language = userLanguage();
    const QString name = language == languageGerman   ? "qtbase_de"
                         : language == languageFrench ? "qtbase_fr"
                                                      : "";
    if (!name.isEmpty() &&
        translator.load(name, QLibraryInfo::path(QLibraryInfo::TranslationsPath))) {
        QApplication::installTranslator(&translator);
    }
    // A dialog that closes does not end the program.
    QApplication::setQuitOnLastWindowClosed(false);
}
