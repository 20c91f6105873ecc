#include "platform/ResourceChain.h"
#include "translations/fendra_de.qm.h"
#include "translations/fendra_fr.qm.h"
#include "workbench/desktop/windowExports.h"
#include "workbench/window/PictureDesktop.h"
#include "workbench/window/WindowDesktop.h"
#include "workbench/window/WorkWindow.h"

#include <QPalette>
#include <QTranslator>

#include <span>

Desktop* makeWindowDesktop(const char* subject) {
    return new WindowDesktop(QString::fromUtf8(subject));
}

Desktop* makePictureDesktop(const char* file) {
    return new PictureDesktop(QString::fromUtf8(file));
}

static void setColours(const std::string& colours) {
    if (colours != "dark" && colours != "light") {
        return;
    }
    const bool dark = colours == "dark";
    const QColor ground(dark ? 0x2b2f36 : 0xf2f3f5), base(dark ? 0x1b1e23 : 0xffffff);
    const QColor text(dark ? 0xe4e7eb : 0x20242a), faint(dark ? 0x8a929c : 0x8a8f96);
    QPalette palette(dark ? QColor(0x3a3f47) : QColor(0xe6e8eb), ground);
    for (const QPalette::ColorRole role :
         {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::ToolTipText}) {
        palette.setColor(role, text);
        palette.setColor(QPalette::Disabled, role, faint);
    }
    palette.setColor(QPalette::Base, base);
    palette.setColor(QPalette::ToolTipBase, base);
    palette.setColor(QPalette::PlaceholderText, faint);
    QApplication::setPalette(palette);
}

// The texts of the window in the user's language.
static void load(QTranslator& texts) {
    const unsigned language = userLanguage();
    const auto take = [&texts](std::span<const unsigned char> bytes) {
        if (texts.load(bytes.data(), static_cast<int>(bytes.size()))) {
            QApplication::installTranslator(&texts);
        }
    };
    if (language == languageGerman) {
        take(textsGerman);
    } else if (language == languageFrench) {
        take(textsFrench);
    }
}

int openWindow(FoldBench& bench, const WindowOrder& order) {
    if (!order.picture.empty()) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    WindowDesktop desktop({});
    if (!order.picture.empty()) {  // what the platform cannot do off screen is of no use to anybody
        qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
    }
    QTranslator texts;
    load(texts);
    setColours(order.colours);
    WorkWindow window(bench, desktop, order);
    window.show();
    return QApplication::exec();
}
