// Analysis > Fit: a model or a formula fitted to the selected curve over the X range that the
// diagram shows (its zoom), through VyrFit. A converged fit is kept in the document, as a
// curve with its notes, so that it is drawn, saved and undone with the document; the dialog
// shows the parameters with their uncertainties, R² and the points used. The script driver's
// "fit" command runs the same code without the dialog.
#ifndef VYR_VIEW_FITDIALOG_H
#define VYR_VIEW_FITDIALOG_H

#include <wx/dialog.h>

class VyrBaseData;
class VyrCourbe;
class wxChoice;
class wxTextCtrl;

struct FitRequest {
    wxString model;    // a built-in model's name, or empty for the formula
    wxString formula;  // a formula in x, when model is empty
    wxString starts;   // "P=V, P=V"
    double xmin = 0, xmax = 0;
};

// Fits and keeps the result in `doc`, shown in the diagrams that show `curve`. True when the
// fit converged; `report` says what came out (the parameters, or why there is none).
bool FitCurve(VyrBaseData& doc, VyrCourbe* curve, const FitRequest& request, wxString& report);

class FitDialog : public wxDialog {
public:
    FitDialog(wxWindow* parent, VyrBaseData& doc, VyrCourbe* curve, double xmin, double xmax);
    // Whether a fit was kept in the document while the dialog was open.
    bool HasKeptAFit() const { return m_kept; }

private:
    void OnFit(wxCommandEvent& event);
    void OnModel(wxCommandEvent& event);

    VyrBaseData& m_doc;
    VyrCourbe* m_curve;
    double m_xmin, m_xmax;
    bool m_kept = false;
    wxChoice* m_model = nullptr;
    wxTextCtrl* m_formula = nullptr;
    wxTextCtrl* m_starts = nullptr;
    wxTextCtrl* m_report = nullptr;
};

#endif
