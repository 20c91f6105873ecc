#pragma once

#include <QByteArray>

#include <utility>
#include <vector>

// While it lives, the process's environment holds nothing of what the user, the display or the
// place say about how things look: Qt starts off screen, with the system's fonts, in English and
// at UTC, and its hashes are the same in every process from then on. To be made where no other
// thread reads the environment.
class PlainEnvironment {
public:
    PlainEnvironment();
    PlainEnvironment(const PlainEnvironment&) = delete;
    PlainEnvironment& operator=(const PlainEnvironment&) = delete;
    ~PlainEnvironment();

private:
    void set(const char* name, const char* value);  // null: it goes

    std::vector<std::pair<QByteArray, QByteArray>> before;  // null: it was not there
};
