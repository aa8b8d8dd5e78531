// A unit record: the unit text and, for each scale type (0 automatic, 1 standard, 2 manual), a
// minimum (0.0) and a maximum (1.0). Used by the document while a file is read and by each
// diagram as its per-unit range record.
#ifndef VYRBASE_DATA_VYRUNIT_H
#define VYRBASE_DATA_VYRUNIT_H

#include <wx/string.h>

#include "vyrbase/core/VyrExport.h"

class VYRBASE_API VyrUnit {
public:
    static const int TYPE_COUNT = 3;

    VyrUnit() = default;
    VyrUnit(const VyrUnit&) = default;
    VyrUnit& operator=(const VyrUnit&) = default;
    virtual ~VyrUnit();

    const wxString& GetName() const { return m_sName; }
    void SetName(const wxString& name) { m_sName = name; }
    // Scale type 0..2; another type reads 0.0 and is ignored on writing.
    double GetMin(int type) const { return IsType(type) ? m_dMin[type] : 0.0; }
    double GetMax(int type) const { return IsType(type) ? m_dMax[type] : 0.0; }
    void SetMin(int type, double v) {
        if (IsType(type))
            m_dMin[type] = v;
    }
    void SetMax(int type, double v) {
        if (IsType(type))
            m_dMax[type] = v;
    }

private:
    static bool IsType(int type) { return type >= 0 && type < TYPE_COUNT; }

    wxString m_sName;
    double m_dMin[TYPE_COUNT] = {0.0, 0.0, 0.0};
    double m_dMax[TYPE_COUNT] = {1.0, 1.0, 1.0};
};

#endif
