// A variable of an experiment (entity kind 5): a value and the expression that computes it.
#ifndef VYRBASE_DATA_VYRVARIABLE_H
#define VYRBASE_DATA_VYRVARIABLE_H

#include <wx/string.h>

#include "vyrbase/core/VyrEntity.h"
#include "vyrbase/core/VyrExport.h"

class VYRBASE_API VyrVariable : public VyrEntity {
public:
    VyrVariable(int oid, VyrBaseData* base);
    ~VyrVariable() override;

    int GetKind() const override { return VYR_KIND_VARIABLE; }

    double GetValue() const { return m_dValue; }
    void SetValue(double v) { m_dValue = v; }
    // The value's address, for binding by a calculator; valid while the variable lives.
    double* GetAdressValue() { return &m_dValue; }
    const wxString& GetExpression() const { return m_sExpression; }
    void SetExpression(const wxString& e) { m_sExpression = e; }

private:
    double m_dValue = 0.0;
    wxString m_sExpression;
};

#endif
