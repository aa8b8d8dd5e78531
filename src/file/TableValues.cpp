// Numbers, markers of missing values, clock times and dates, each read from one cell.
#include "TableValues.h"

#include <charconv>
#include <cstring>
#include <string>
#include <system_error>

namespace vyrtable {

namespace {

// Days from 1970-01-01 to a date of the proleptic Gregorian calendar.
int64_t DaysFromCivil(int64_t y, unsigned m, unsigned d) {
    y -= m <= 2;
    const int64_t era = (y >= 0 ? y : y - 399) / 400;
    const unsigned yoe = static_cast<unsigned>(y - era * 400);
    const unsigned doy = (153 * (m + (m > 2 ? -3 : 9)) + 2) / 5 + d - 1;
    const unsigned doe = yoe * 365 + yoe / 4 - yoe / 100 + doy;
    return era * 146097 + static_cast<int64_t>(doe) - 719468;
}

bool IsLeap(int y) {
    return (y % 4 == 0 && y % 100 != 0) || y % 400 == 0;
}

bool ValidDate(int y, int m, int d) {
    static const int kDays[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    if (y < 1000 || y > 9999 || m < 1 || m > 12 || d < 1)
        return false;
    return d <= kDays[m - 1] + (m == 2 && IsLeap(y) ? 1 : 0);
}

// Reads n digits (n from `least` to `most`) at s[at]; advances `at`.
bool Digits(std::string_view s, size_t& at, size_t least, size_t most, int& value) {
    size_t k = 0;
    value = 0;
    while (k < most && at + k < s.size() && s[at + k] >= '0' && s[at + k] <= '9') {
        value = value * 10 + (s[at + k] - '0');
        ++k;
    }
    if (k < least)
        return false;
    at += k;
    return true;
}

bool Eat(std::string_view s, size_t& at, char c) {
    if (at < s.size() && s[at] == c) {
        ++at;
        return true;
    }
    return false;
}

bool EqualsNoCase(std::string_view a, const char* b) {
    const size_t n = std::strlen(b);
    if (a.size() != n)
        return false;
    for (size_t k = 0; k < n; ++k) {
        char c = a[k];
        if (c >= 'A' && c <= 'Z')
            c = static_cast<char>(c - 'A' + 'a');
        if (c != b[k])
            return false;
    }
    return true;
}

// A date at s[at]: "yyyy-MM-dd", "yyyy/MM/dd", "dd.MM.yyyy" or "a/b/yyyy".
bool ReadDate(std::string_view s, size_t& at, SlashOrder& order, int64_t& days) {
    size_t k = at;
    int a = 0, b = 0, c = 0;
    if (!Digits(s, k, 1, 4, a))
        return false;
    const size_t first = k - at;
    if (k >= s.size())
        return false;
    const char mark = s[k];
    if (mark != '-' && mark != '/' && mark != '.')
        return false;
    ++k;
    if (!Digits(s, k, 1, 2, b) || !Eat(s, k, mark))
        return false;
    int y, m, d;
    if (first == 4) {
        if (mark == '.' || !Digits(s, k, 1, 2, c))
            return false;
        y = a;
        m = b;
        d = c;
    } else {
        if (first > 2 || mark == '-' || !Digits(s, k, 4, 4, c))
            return false;
        y = c;
        if (mark == '.') {
            d = a;
            m = b;
        } else {
            if (a > 12)
                order.seenDayAbove12 = true;
            if (b > 12)
                order.seenMonthAbove12 = true;
            // A cell that can be read one way only is read that way.
            const bool monthFirst = order.monthFirst ? a <= 12 : b > 12;
            m = monthFirst ? a : b;
            d = monthFirst ? b : a;
        }
    }
    // A digit right after the date makes it no date ("2026-04-012").
    if (k < s.size() && s[k] >= '0' && s[k] <= '9')
        return false;
    if (!ValidDate(y, m, d))
        return false;
    days = DaysFromCivil(y, static_cast<unsigned>(m), static_cast<unsigned>(d));
    at = k;
    return true;
}

// A clock time at s[at]: "H:mm", "H:mm:ss", "H:mm:ss.fff" (a comma also marks the fraction),
// then an optional " AM"/" PM".
bool ReadClock(std::string_view s, size_t& at, double& seconds) {
    size_t k = at;
    int h = 0, m = 0, sec = 0;
    if (!Digits(s, k, 1, 2, h) || !Eat(s, k, ':') || !Digits(s, k, 2, 2, m))
        return false;
    double fraction = 0.0;
    if (Eat(s, k, ':')) {
        if (!Digits(s, k, 2, 2, sec))
            return false;
        if (k < s.size() && (s[k] == '.' || s[k] == ',')) {
            const size_t start = ++k;
            double scale = 0.1;
            while (k < s.size() && s[k] >= '0' && s[k] <= '9') {
                fraction += (s[k] - '0') * scale;
                scale /= 10;
                ++k;
            }
            if (k == start)
                return false;
        }
    }
    size_t after = k;
    while (after < s.size() && s[after] == ' ')
        ++after;
    if (after + 2 == s.size() || (after + 2 < s.size() && s[after + 2] == ' ')) {
        const std::string_view half = s.substr(after, 2);
        const bool am = EqualsNoCase(half, "am"), pm = EqualsNoCase(half, "pm");
        if (am || pm) {
            if (h < 1 || h > 12)
                return false;
            h = h % 12 + (pm ? 12 : 0);
            k = after + 2;
        }
    }
    if (h > 24 || m > 59 || sec > 60 || (h == 24 && (m > 0 || sec > 0 || fraction > 0)))
        return false;
    seconds = h * 3600.0 + m * 60.0 + sec + fraction;
    at = k;
    return true;
}

// A time zone at s[at]: "Z", "+hh", "+hhmm", "+hh:mm" (or "-"); seconds east of UTC.
bool ReadZone(std::string_view s, size_t& at, double& offset) {
    size_t k = at;
    offset = 0.0;
    if (Eat(s, k, 'Z')) {
        at = k;
        return true;
    }
    if (k >= s.size() || (s[k] != '+' && s[k] != '-'))
        return false;
    const double sign = s[k] == '-' ? -1.0 : 1.0;
    ++k;
    int h = 0, m = 0;
    if (!Digits(s, k, 2, 2, h))
        return false;
    Eat(s, k, ':');
    if (k < s.size() && !Digits(s, k, 2, 2, m))
        return false;
    if (h > 14 || m > 59)
        return false;
    offset = sign * (h * 3600.0 + m * 60.0);
    at = k;
    return true;
}

}  // namespace

// a comma was read as the decimal mark.
bool ReadNumber(std::string_view cell, const NumberStyle& style, double& value, bool* commaRead) {
    if (cell.empty())
        return false;
    size_t at = cell[0] == '+' || cell[0] == '-' ? 1 : 0;
    if (at >= cell.size())
        return false;
    const char lead = cell[at];
    if (!((lead >= '0' && lead <= '9') || (lead == '.' && style.point) ||
          (lead == ',' && style.comma)))
        return false;
    // from_chars takes a leading "-" but no "+".
    if (cell[0] == '+')
        cell.remove_prefix(1);
    const bool hasComma = style.comma && cell.find(',') != std::string_view::npos;
    if (!style.point && cell.find('.') != std::string_view::npos)
        return false;
    std::string copy;
    char small[96];
    const char* first = cell.data();
    const char* last = first + cell.size();
    if (hasComma) {
        char* out = small;
        if (cell.size() > sizeof small) {
            copy.assign(cell);
            out = &copy[0];
        }
        for (size_t k = 0; k < cell.size(); ++k)
            out[k] = cell[k] == ',' ? '.' : cell[k];
        first = out;
        last = out + cell.size();
    }
    const std::from_chars_result result = std::from_chars(first, last, value);
    if (result.ec != std::errc() || result.ptr != last)
        return false;
    if (hasComma && commaRead)
        *commaRead = true;
    return true;
}

NumberShape ShapeOfNumber(std::string_view cell, const NumberStyle& style) {
    const size_t n = cell.size();
    size_t i = n > 0 && (cell[0] == '+' || cell[0] == '-') ? 1 : 0;
    size_t digits = 0, marks = 0;
    for (; i < n; ++i) {
        const char c = cell[i];
        if (c >= '0' && c <= '9') {
            ++digits;
        } else if ((c == '.' && style.point) || (c == ',' && style.comma)) {
            if (++marks > 1)
                return kNotNumber;
        } else {
            break;
        }
    }
    if (digits == 0)
        return kNotNumber;
    if (i == n)
        return kNumberShape;
    return cell[i] == 'e' || cell[i] == 'E' ? kMaybeNumber : kNotNumber;
}

bool IsMissingMarker(std::string_view cell) {
    static const char* const kMarkers[] = {"",    "-", "--",   "---",  "nan",  "na",
                                           "n/a", "m", "null", "none", "#n/a", "?"};
    for (const char* marker : kMarkers)
        if (EqualsNoCase(cell, marker))
            return true;
    return false;
}

Instant ReadInstant(std::string_view cell, SlashOrder& order) {
    Instant instant;
    if (cell.empty() || cell[0] < '0' || cell[0] > '9')
        return instant;
    size_t at = 0;
    double seconds = 0.0;
    if (ReadClock(cell, at, seconds)) {
        if (at != cell.size())
            return instant;
        instant.kind = Instant::kClock;
        instant.seconds = seconds;
        return instant;
    }
    at = 0;
    int64_t days = 0;
    if (!ReadDate(cell, at, order, days))
        return instant;
    if (at == cell.size()) {
        instant.kind = Instant::kDate;
        instant.days = days;
        return instant;
    }
    // Between date and time: a "T", or blanks, or ", ".
    size_t k = at;
    if (!Eat(cell, k, 'T')) {
        Eat(cell, k, ',');
        const size_t blanks = k;
        while (k < cell.size() && cell[k] == ' ')
            ++k;
        if (k == blanks)
            return instant;
    }
    if (!ReadClock(cell, k, seconds))
        return instant;
    double offset = 0.0;
    if (k < cell.size() && !ReadZone(cell, k, offset))
        return instant;
    if (k != cell.size())
        return instant;
    instant.kind = Instant::kDateTime;
    instant.days = days;
    instant.seconds = seconds - offset;
    return instant;
}

Instant ReadStamp(std::string_view cell) {
    Instant instant;
    if (cell.size() != 8 && cell.size() != 10 && cell.size() != 12 && cell.size() != 14)
        return instant;
    int parts[6] = {0, 0, 0, 0, 0, 0};
    const size_t widths[6] = {4, 2, 2, 2, 2, 2};
    size_t at = 0;
    for (int k = 0; k < 6 && at < cell.size(); ++k)
        if (!Digits(cell, at, widths[k], widths[k], parts[k]))
            return instant;
    if (!ValidDate(parts[0], parts[1], parts[2]) || parts[3] > 23 || parts[4] > 59 || parts[5] > 60)
        return instant;
    instant.kind = cell.size() == 8 ? Instant::kDate : Instant::kDateTime;
    instant.days =
        DaysFromCivil(parts[0], static_cast<unsigned>(parts[1]), static_cast<unsigned>(parts[2]));
    instant.seconds = parts[3] * 3600.0 + parts[4] * 60.0 + parts[5];
    return instant;
}

}  // namespace vyrtable
