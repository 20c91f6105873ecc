#include "workbench/desktop/windowExports.h"
#include "workbench/messages/Failure.h"
#include "workbench/window/Application.h"
#include "workbench/window/FigurePainter.h"
#include "workbench/window/PlainEnvironment.h"

#include <new>
#include <optional>

namespace {

// While it lives, Qt says nothing.
class Silence {
public:
    Silence() : before(qInstallMessageHandler(drop)) {}
    Silence(const Silence&) = delete;
    Silence& operator=(const Silence&) = delete;
    ~Silence() { qInstallMessageHandler(before); }

private:
    static void drop(QtMsgType /*type*/, const QMessageLogContext& /*context*/,
                     const QString& /*text*/) {}

    QtMessageHandler before;
};

}  // namespace

// Where there is no window, Qt starts here, and stays until the process ends.
void paintFigure(const Figure& figure, const PictureOrder& order, PaintedFigure& painted) {
    static const Application* own = nullptr;
    std::optional<PlainEnvironment> plain;
    if (own != nullptr || QApplication::instance() == nullptr) {
        plain.emplace();
    }
    if (QApplication::instance() == nullptr) {
        own = new Application;
    }
    const Silence silence;
    try {
        painted = FigurePainter(figure, order).paint();
    } catch (const std::bad_alloc&) {
        throw Failure("memory does not suffice for the picture; make it smaller with --size");
    }
}
