// Cells told apart, and rows read into the columns of a document.
#include "TableRows.h"

#include <algorithm>

#include "vyrbase/data/VyrBitMask.h"

namespace vyrtable {

bool CellReading::Number(const Cell<char>& cell, double& value, bool* commaRead) const {
    if (cell.escaped || !ReadNumber(cell.content, cell.quoted ? quoted : plain, value, commaRead))
        return false;
    for (double sentinel : missing)
        if (value == sentinel)
            return false;
    return true;
}

CellSeen See(const Cell<char>& cell, const CellReading& reading) {
    CellSeen seen;
    const NumberStyle& style = cell.quoted ? reading.quoted : reading.plain;
    // The characters tell a number, unless its value is asked for: a sentinel, an exponent.
    const NumberShape shape = cell.escaped ? kNotNumber : ShapeOfNumber(cell.content, style);
    double value;
    if (shape == kNumberShape && reading.missing.empty()) {
        seen.kind = kCellNumber;
        seen.stamp = cell.content.size() >= 8 && ReadStamp(cell.content).kind != Instant::kNone;
        return seen;
    }
    if (shape != kNotNumber && ReadNumber(cell.content, style, value)) {
        for (double sentinel : reading.missing)
            if (value == sentinel)
                return seen;
        seen.kind = kCellNumber;
        seen.stamp = cell.content.size() >= 8 && ReadStamp(cell.content).kind != Instant::kNone;
        return seen;
    }
    if (IsMissingMarker(cell.content))
        return seen;
    SlashOrder order;
    const Instant instant = cell.escaped ? Instant() : ReadInstant(cell.content, order);
    if (instant.kind == Instant::kNone) {
        seen.kind = kCellText;
        return seen;
    }
    seen.kind = kCellInstant;
    seen.instant = instant.kind;
    seen.dayAbove12 = order.seenDayAbove12;
    seen.monthAbove12 = order.seenMonthAbove12;
    return seen;
}

void ColumnTally::Add(const CellSeen& cell) {
    switch (cell.kind) {
        case kCellNumber:
            ++numbers;
            stamps += cell.stamp;
            break;
        case kCellInstant:
            clocks += cell.instant == Instant::kClock;
            dates += cell.instant == Instant::kDate;
            dateTimes += cell.instant == Instant::kDateTime;
            order.seenDayAbove12 = order.seenDayAbove12 || cell.dayAbove12;
            order.seenMonthAbove12 = order.seenMonthAbove12 || cell.monthAbove12;
            break;
        case kCellText:
            ++texts;
            break;
        default:
            break;
    }
}

void TableColumn::Put(size_t row, bool ok, double value) {
    if (ok) {
        if (!seen) {
            seen = true;
            lo = hi = value;
        }
        lo = std::min(lo, value);
        hi = std::max(hi, value);
        last = value;
    } else {
        if (!seen)
            ++leading;
        validity->Unset(static_cast<int>(row));
    }
    values[row] = ok ? value : last;
}

void TableColumn::Finish() {
    const double first = seen ? values[leading] : 0.0;
    std::fill(values, values + leading, first);
}

RowReader::RowReader(wchar_t separator, const CellReading& reading, std::vector<ColumnRole> roles,
                     int timeTarget)
    : m_cSeparator(separator),
      m_reading(reading),
      m_roles(std::move(roles)),
      m_iTimeTarget(timeTarget) {}

void RowReader::Read(std::string_view line, size_t row, std::vector<TableColumn>& targets) {
    Instant moment, date, clock;
    std::string_view momentText, dateText, clockText;
    size_t k = 0;
    SplitCells(line, m_cSeparator, [&](const Cell<char>& cell) {
        if (k < m_roles.size()) {
            ColumnRole& role = m_roles[k];
            switch (role.kind) {
                case ColumnRole::kNumber: {
                    double value = 0.0;
                    const bool ok = m_reading.Number(cell, value, &m_bCommaRead);
                    targets[role.target].Put(row, ok, value);
                    break;
                }
                case ColumnRole::kInstant:
                case ColumnRole::kStamp: {
                    if (cell.escaped)
                        break;
                    const Instant read = role.kind == ColumnRole::kStamp
                                             ? ReadStamp(cell.content)
                                             : ReadInstant(cell.content, role.order);
                    const bool fits = role.kind == ColumnRole::kStamp ||
                                      role.clock == (read.kind == Instant::kClock);
                    if (read.kind != Instant::kNone && fits) {
                        moment = read;
                        momentText = cell.content;
                    }
                    break;
                }
                case ColumnRole::kJoinDate:
                case ColumnRole::kJoinClock: {
                    if (cell.escaped)
                        break;
                    const Instant read = ReadInstant(cell.content, role.order);
                    const bool dateRole = role.kind == ColumnRole::kJoinDate;
                    if (dateRole && read.kind == Instant::kDate) {
                        date = read;
                        dateText = cell.content;
                    } else if (!dateRole && read.kind == Instant::kClock) {
                        clock = read;
                        clockText = cell.content;
                    }
                    break;
                }
                default:
                    break;
            }
        }
        ++k;
    });
    for (; k < m_roles.size(); ++k)
        if (m_roles[k].kind == ColumnRole::kNumber)
            targets[m_roles[k].target].Put(row, false, 0.0);
    if (m_iTimeTarget < 0)
        return;

    std::string text;
    if (date.kind != Instant::kNone && clock.kind != Instant::kNone) {
        moment.kind = Instant::kDateTime;
        moment.days = date.days;
        moment.seconds = clock.seconds;
        text.assign(dateText).append(" ").append(clockText);
    } else if (moment.kind != Instant::kNone) {
        text.assign(momentText);
    }
    if (moment.kind == Instant::kNone) {
        targets[m_iTimeTarget].Put(row, false, 0.0);
        return;
    }
    if (moment.kind == Instant::kClock) {
        // A logger's clock that passes midnight starts the next day: a time more than half a
        // day before the previous one. A smaller step back stays a step back.
        if (m_bClockSeen && moment.seconds < m_dLastClock - 43200.0)
            ++m_iClockDays;
        m_bClockSeen = true;
        m_dLastClock = moment.seconds;
        moment.days = m_iClockDays;
    }
    if (!m_bBase) {
        m_bBase = true;
        m_iBaseDays = moment.days;
        m_dBaseSeconds = moment.seconds;
        m_sStart = text;
    }
    const double seconds = static_cast<double>(moment.days - m_iBaseDays) * 86400.0 +
                           (moment.seconds - m_dBaseSeconds);
    targets[m_iTimeTarget].Put(row, true, seconds);
}

}  // namespace vyrtable
