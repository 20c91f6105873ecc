#include "workbench/files/text/ClockTime.h"

#include "workbench/files/text/CellCutter.h"

namespace {

// Takes what it is asked for from the front of a text; after the first thing that is not there,
// nothing more.
class Scanner {
public:
    explicit Scanner(std::string_view text) : rest(text) {}

    [[nodiscard]] bool good() const { return valid; }
    [[nodiscard]] std::size_t left() const { return rest.size(); }
    [[nodiscard]] bool ended() const { return valid && rest.empty(); }
    [[nodiscard]] bool at(std::string_view letters) const {
        return !rest.empty() && letters.find(rest.front()) != std::string_view::npos;
    }

    char one(std::string_view letters) {
        valid = valid && at(letters);
        const char letter = valid ? rest.front() : '\0';
        rest.remove_prefix(valid ? 1 : 0);
        return letter;
    }

    std::int64_t digits(int count, std::int64_t lowest, std::int64_t highest) {
        std::int64_t number = 0;
        for (; count > 0; --count) {
            number = 10 * number + (one("0123456789") - '0');
        }
        valid = valid && number >= lowest && number <= highest;
        return number;
    }

private:
    std::string_view rest;
    bool valid = true;
};

}  // namespace

// Days from 1970-01-01 to a date of the Gregorian calendar. With years that begin in March a leap
// day comes last, and the months before the m-th one have (153 m + 2) / 5 days (Howard Hinnant,
// "chrono-compatible low-level date algorithms", 2013).
static std::int64_t daysTo(std::int64_t year, std::int64_t month, std::int64_t day) {
    year -= month <= 2 ? 1 : 0;
    const std::int64_t m = (month + 9) % 12, ofYear = (153 * m + 2) / 5 + day - 1;
    const std::int64_t era = year / 400, ofEra = year % 400;
    return era * 146097 + ofEra * 365 + ofEra / 4 - ofEra / 100 + ofYear - 719468;
}

static bool isDay(std::int64_t year, std::int64_t month, std::int64_t day) {
    const bool december = month == 12;
    return day <=
           daysTo(december ? year + 1 : year, december ? 1 : month + 1, 1) - daysTo(year, month, 1);
}

static constexpr std::int64_t second = 1000000000;

// hh:mm, :ss and .fff after it.
static void takeTime(Scanner& from, ClockTime& time) {
    std::int64_t seconds = from.digits(2, 0, 23) * 3600;
    from.one(":");
    seconds += from.digits(2, 0, 59) * 60;
    if (from.at(":")) {
        from.one(":");
        seconds += from.digits(2, 0, 60);  // 60: a leap second
    }
    time.sinceMidnight = seconds * second;
    if (from.good() && from.at(".,")) {
        from.one(".,");
        std::int64_t place = second;
        do {
            place /= 10;
            time.sinceMidnight += from.digits(1, 0, 9) * place;
        } while (place > 1 && from.at("0123456789"));
    }
    time.nanoseconds += time.sinceMidnight;
}

static void takeZone(Scanner& from, ClockTime& time) {
    const char sign = from.one("Z+-");
    if (sign == '+' || sign == '-') {
        const std::int64_t hours = from.digits(2, 0, 23);
        const bool alone = from.ended();
        if (from.at(":")) {
            from.one(":");
        }
        const std::int64_t minutes = hours * 60 + (alone ? 0 : from.digits(2, 0, 59));
        time.nanoseconds -= (sign == '+' ? minutes : -minutes) * 60 * second;
    }
}

static bool takeDate(Scanner& from, ClockTime& time) {
    const std::int64_t year = from.digits(4, 1700, 2200);  // nanoseconds fit into 64 bits
    from.one("-");
    const std::int64_t month = from.digits(2, 1, 12);
    from.one("-");
    const std::int64_t day = from.digits(2, 1, 31);
    if (!from.good() || !isDay(year, month, day)) {
        return false;
    }
    time.nanoseconds = daysTo(year, month, day) * 86400 * second;
    time.dated = true;
    return true;
}

std::optional<ClockTime> ClockTime::of(std::string_view cell) {
    cell = withoutQuotes(cell);
    ClockTime time;
    Scanner from(cell);
    time.digits = cell.size();
    const bool dated = cell.size() >= 10 && cell[4] == '-';
    if (dated && !takeDate(from, time)) {
        return std::nullopt;
    }
    if (dated && from.ended()) {
        return time;
    }
    if (dated) {
        from.one("T ");
    }
    takeTime(from, time);
    time.digits = cell.size() - from.left();
    if (dated && from.good() && !from.ended()) {
        takeZone(from, time);
    }
    return from.ended() ? std::optional(time) : std::nullopt;
}

bool MomentColumn::read(std::string_view& cell, double& seconds) {
    constexpr std::int64_t day = 86400 * second;
    const std::optional<ClockTime> moment = ClockTime::of(cell);
    if (!moment || (last && moment->dated != first.dated)) {
        return false;
    }
    cell = withoutQuotes(cell);
    if (!last) {
        first = *moment;
        text = cell;
    }
    std::int64_t now = moment->nanoseconds;
    if (last && !first.dated) {
        // To the day on which it is nearest to the one before.
        const std::int64_t apart = *last - now;
        now += (apart >= 0 ? apart + day / 2 : apart - day / 2) / day * day;
    }
    cell = cell.substr(0, moment->digits);
    last = now;
    seconds = static_cast<double>(now - first.nanoseconds) / static_cast<double>(second);
    return true;
}

double MomentColumn::start() const {
    return static_cast<double>(first.sinceMidnight) / static_cast<double>(second);
}
