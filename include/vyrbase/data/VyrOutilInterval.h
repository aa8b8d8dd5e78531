// An interval tool (entity kind 17): two labelled points in data units, drawn on a diagram as a
// measured rectangle, or as one labelled point when both corners are equal.
#ifndef VYRBASE_DATA_VYROUTILINTERVAL_H
#define VYRBASE_DATA_VYROUTILINTERVAL_H

#include <wx/string.h>

#include "vyrbase/core/VyrEntity.h"
#include "vyrbase/core/VyrExport.h"

class VYRBASE_API VyrOutilInterval : public VyrEntity {
public:
    VyrOutilInterval(int oid, VyrBaseData* base);
    ~VyrOutilInterval() override;

    int GetKind() const override { return VYR_KIND_OUTIL_INTERVAL; }

    const wxString& GetEtiq1() const { return m_sEtiq1; }
    const wxString& GetEtiq2() const { return m_sEtiq2; }
    // The X and Y units under which the diagram keeps the ranges the tool is drawn in.
    const wxString& GetAbs() const { return m_sAbs; }
    const wxString& GetOrd() const { return m_sOrd; }
    void SetEtiq1(const wxString& s) { m_sEtiq1 = s; }
    void SetEtiq2(const wxString& s) { m_sEtiq2 = s; }
    void SetAbs(const wxString& s) { m_sAbs = s; }
    void SetOrd(const wxString& s) { m_sOrd = s; }

    double GetX0() const { return m_dX0; }
    double GetY0() const { return m_dY0; }
    double GetX1() const { return m_dX1; }
    double GetY1() const { return m_dY1; }
    void SetX0(double v) { m_dX0 = v; }
    void SetY0(double v) { m_dY0 = v; }
    void SetX1(double v) { m_dX1 = v; }
    void SetY1(double v) { m_dY1 = v; }
    void SetPoints(double x0, double y0, double x1, double y1) {
        m_dX0 = x0;
        m_dY0 = y0;
        m_dX1 = x1;
        m_dY1 = y1;
    }
    // A point tool: both corners equal.
    bool IsPoint() const { return m_dX0 == m_dX1 && m_dY0 == m_dY1; }

    bool IsSelected() const { return m_bSelected; }
    void SetSelected(bool selected) { m_bSelected = selected; }

private:
    wxString m_sEtiq1;
    wxString m_sEtiq2;
    wxString m_sAbs;
    wxString m_sOrd;
    double m_dX0 = 0.0;
    double m_dY0 = 0.0;
    double m_dX1 = 0.0;
    double m_dY1 = 0.0;
    bool m_bSelected = false;
};

#endif
