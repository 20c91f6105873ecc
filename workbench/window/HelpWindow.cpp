#include "workbench/window/HelpWindow.h"

#include "help/settings.de.html.h"
#include "help/settings.en.html.h"
#include "help/settings.fr.html.h"
#include "platform/ResourceChain.h"

#include <QScreen>
#include <QTextBrowser>
#include <QVBoxLayout>

#include <span>

static std::span<const unsigned char> page() {
    switch (userLanguage()) {
        case languageGerman:
            return settingsGerman;
        case languageFrench:
            return settingsFrench;
        default:
            return settingsEnglish;
    }
}

HelpWindow::HelpWindow(QWidget* parent) : QDialog(parent) {
    auto* const browser = new QTextBrowser(this);
    browser->document()->setDocumentMargin(16);
    browser->setHtml(QString::fromUtf8(QByteArrayView(page())));
    setWindowTitle(browser->documentTitle());
    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(browser);
    resize(QSize(680, 720).boundedTo(screen()->availableSize()));
    setAttribute(Qt::WA_DeleteOnClose);
}
