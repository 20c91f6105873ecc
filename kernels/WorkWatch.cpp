#include "kernels/WorkWatch.h"

#include <algorithm>
#include <utility>

namespace kernels {

static thread_local WorkWatch* watching = nullptr;

WorkWatch::WorkWatch(const Question& goesOn)
    : question(goesOn), before(std::exchange(watching, this)) {}

WorkWatch::~WorkWatch() {
    watching = before;
}

void WorkWatch::ask(double share) {
    if (watching == nullptr) {
        return;
    }
    watching->waiting = 0.0;
    bool goesOn = false;
    try {
        goesOn = watching->question(watching->from + watching->width * std::min(share, 1.0));
    } catch (...) {  // whoever cannot answer is not waited for
    }
    if (!goesOn) {
        throw Stopped();
    }
}

void WorkWatch::passed(double work) {
    if (watching != nullptr && (watching->waiting += work) >= piece) {
        ask(0.0);
    }
}

WorkPart::WorkPart(double from, double to) : watch(watching) {
    if (watch != nullptr) {
        fromBefore = watch->from;
        widthBefore = watch->width;
        watch->from += from * widthBefore;
        watch->width *= to - from;
    }
}

WorkPart::~WorkPart() {
    if (watch != nullptr) {
        watch->from = fromBefore;
        watch->width = widthBefore;
    }
}

}  // namespace kernels
