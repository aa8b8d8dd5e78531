#include "FitDialog.h"

#include <wx/button.h>
#include <wx/choice.h>
#include <wx/sizer.h>
#include <wx/stattext.h>
#include <wx/textctrl.h>
#include <wx/tokenzr.h>

#include "vyrbase/calc/VyrFit.h"
#include "vyrbase/core/VyrBaseData.h"
#include "vyrbase/data/VyrCourbe.h"
#include "vyrbase/data/VyrExperience.h"
#include "vyrbase/data/VyrVariable.h"
#include "vyrbase/diagram/VyrDiagram.h"

namespace {

const char* const kFormulaChoice = "formula";

}  // namespace

bool FitCurve(VyrBaseData& doc, VyrCourbe* curve, const FitRequest& request, wxString& report) {
    if (!curve) {
        report = "Select a curve to fit.";
        return false;
    }
    VyrFit fit;
    // A formula reads the variables of the curve's experiment by name.
    if (VyrExperience* e = doc.FindExperienceFromCourbe(curve))
        for (auto* node = e->GetVariables().GetFirst(); node; node = node->GetNext())
            fit.BindVariable(node->GetData()->GetEntityName(), node->GetData()->GetAdressValue());
    const bool chosen =
        request.model.empty() ? fit.SetFormula(request.formula) : fit.SetModel(request.model);
    if (!chosen) {
        report = fit.GetError();
        return false;
    }
    wxStringTokenizer starts(request.starts, ",");
    while (starts.HasMoreTokens()) {
        const wxString item = starts.GetNextToken().Trim(true).Trim(false);
        double value = 0;
        if (item.empty())
            continue;
        if (!item.AfterFirst('=').ToCDouble(&value) ||
            !fit.SetStart(item.BeforeFirst('='), value)) {
            report = "Starting values: " + item + " is no NAME=VALUE of a parameter.";
            return false;
        }
    }
    if (request.xmax > request.xmin)
        fit.SetRange(request.xmin, request.xmax);
    if (!fit.Fit(curve)) {
        report = "No result: " + fit.GetError() + ".";
        return false;
    }
    // A new curve makes the diagrams compute their ranges again, which ends a zoom: the user
    // goes on looking at the part that was fitted.
    bool zoomed[2] = {false, false};
    VyrScale shown[2];
    for (int d = 0; d < 2; ++d)
        if (VyrDiagram* diagram = doc.GetDiagram(d)) {
            zoomed[d] = diagram->IsZoomed();
            shown[d] = *diagram->GetCurrentScale();
        }
    VyrCourbe* fitted = fit.AddToDocument(&doc, curve);
    for (int d = 0; fitted && d < 2; ++d) {
        VyrDiagram* diagram = doc.GetDiagram(d);
        if (!diagram)
            continue;
        if (fitted->IsShownInDiagram(d))
            diagram->ShowData(fitted, true);
        if (zoomed[d])
            diagram->SetZoom(&shown[d]);
    }
    report = "y = " + fit.GetEquation() + "\n" + fit.FormatResult();
    return true;
}

FitDialog::FitDialog(wxWindow* parent, VyrBaseData& doc, VyrCourbe* curve, double xmin, double xmax)
    : wxDialog(parent, wxID_ANY, "Fit " + curve->GetName(), wxDefaultPosition, wxDefaultSize,
               wxDEFAULT_DIALOG_STYLE | wxRESIZE_BORDER),
      m_doc(doc),
      m_curve(curve),
      m_xmin(xmin),
      m_xmax(xmax) {
    wxArrayString models = VyrFit::GetModelNames();
    models.Add(kFormulaChoice);
    m_model = new wxChoice(this, wxID_ANY, wxDefaultPosition, wxDefaultSize, models);
    m_model->SetSelection(0);
    m_formula = new wxTextCtrl(this, wxID_ANY, "A*exp(-x/tau)+C");
    m_formula->Enable(false);
    m_starts = new wxTextCtrl(this, wxID_ANY);
    m_starts->SetHint("tau=0.01, C=0");
    m_report = new wxTextCtrl(this, wxID_ANY, wxEmptyString, wxDefaultPosition, wxSize(460, 160),
                              wxTE_MULTILINE | wxTE_READONLY);

    auto* grid = new wxFlexGridSizer(2, wxSize(8, 6));
    grid->AddGrowableCol(1);
    grid->Add(new wxStaticText(this, wxID_ANY, "Model"), 0, wxALIGN_CENTER_VERTICAL);
    grid->Add(m_model, 1, wxEXPAND);
    grid->Add(new wxStaticText(this, wxID_ANY, "Formula in x"), 0, wxALIGN_CENTER_VERTICAL);
    grid->Add(m_formula, 1, wxEXPAND);
    grid->Add(new wxStaticText(this, wxID_ANY, "Starting values"), 0, wxALIGN_CENTER_VERTICAL);
    grid->Add(m_starts, 1, wxEXPAND);
    grid->Add(new wxStaticText(this, wxID_ANY, "Range of x"), 0, wxALIGN_CENTER_VERTICAL);
    grid->Add(new wxStaticText(this, wxID_ANY,
                               wxString::Format("%g to %g (the diagram's zoom)", xmin, xmax)));
    auto* buttons = new wxBoxSizer(wxHORIZONTAL);
    buttons->AddStretchSpacer();
    buttons->Add(new wxButton(this, wxID_OK, "&Fit"), 0, wxRIGHT, 8);
    buttons->Add(new wxButton(this, wxID_CANCEL, "&Close"));
    auto* column = new wxBoxSizer(wxVERTICAL);
    column->Add(grid, 0, wxEXPAND | wxALL, 10);
    column->Add(m_report, 1, wxEXPAND | wxLEFT | wxRIGHT, 10);
    column->Add(buttons, 0, wxEXPAND | wxALL, 10);
    SetSizerAndFit(column);

    m_model->Bind(wxEVT_CHOICE, &FitDialog::OnModel, this);
    // The dialog stays open after a fit, so that another model can be tried on the same range.
    Bind(wxEVT_BUTTON, &FitDialog::OnFit, this, wxID_OK);
}

void FitDialog::OnModel(wxCommandEvent&) {
    m_formula->Enable(m_model->GetStringSelection() == kFormulaChoice);
}

void FitDialog::OnFit(wxCommandEvent&) {
    FitRequest request;
    const wxString choice = m_model->GetStringSelection();
    if (choice == kFormulaChoice)
        request.formula = m_formula->GetValue();
    else
        request.model = choice;
    request.starts = m_starts->GetValue();
    request.xmin = m_xmin;
    request.xmax = m_xmax;
    wxString report;
    if (FitCurve(m_doc, m_curve, request, report))
        m_kept = true;
    m_report->SetValue(report);
}
