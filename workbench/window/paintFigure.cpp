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

// Where there is no window, Qt starts here, and ends with the picture: what it holds is given back.
void paintFigure(const Figure& figure, const PictureOrder& order, PaintedFigure& painted) {
    std::optional<PlainEnvironment> plain;
    std::optional<Application> own;
    if (QApplication::instance() == nullptr) {
        plain.emplace();
        own.emplace();
    }
    const Silence silence;
    try {
        painted = FigurePainter(figure, order).paint();
    } catch (const std::bad_alloc&) {
        throw Failure("memory does not suffice for the picture; make it smaller with --size");
    }
}
