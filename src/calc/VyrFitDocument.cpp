// A converged fit kept in the document: the model as a curve of the source's experiment and a
// note on it, made through the document's public operations so that they are drawn, saved and
// loaded like any curve and note.
#include <algorithm>
#include <cmath>

#include "calc/VyrFitImpl.h"
#include "vyrbase/calc/VyrFit.h"
#include "vyrbase/core/VyrBaseData.h"
#include "vyrbase/core/VyrObserverMsg.h"
#include "vyrbase/data/VyrCourbe.h"
#include "vyrbase/data/VyrCourbeParam.h"
#include "vyrbase/data/VyrExperience.h"
#include "vyrbase/data/VyrNote.h"
#include "vyrbase/data/VyrVecteur.h"

VyrCourbe* VyrFit::AddToDocument(VyrBaseData* doc, VyrCourbe* source, int points) const {
    const Impl& d = *m_pImpl;
    if (!doc || !source || !d.converged || !source->GetVx() || !source->GetVy() || points < 2 ||
        points > 100000)
        return nullptr;
    VyrExperience* e = doc->FindExperienceFromCourbe(source);
    if (!e)
        return nullptr;
    VyrVecteur* vx = source->GetVx();
    VyrVecteur* vy = source->GetVy();
    VyrCourbeParam p;
    p.m_sGrdX = vx->GetGrandeur();
    p.m_sUniteX = vx->GetUnite();
    p.m_sUniteY = vy->GetUnite();
    p.m_sGrdY = VyrBaseData::GetUniqueGrandeur(e, "fit_" + vy->GetGrandeur(), p.m_sUniteY,
                                               p.m_sGrdX, p.m_sUniteX);
    p.m_sNom = p.m_sGrdY;
    p.m_sNomVx = p.m_sNom + "VX";
    p.m_sNomVy = p.m_sNom + "VY";
    p.m_sText = GetEquation();
    const wxColour& c = source->GetColor();
    // The source's colour, darker, so that model and measurement are told apart.
    p.m_colour = wxColour(c.Red() * 3 / 5, c.Green() * 3 / 5, c.Blue() * 3 / 5);
    p.m_iWidth = 2;
    p.m_iStylePoint = 0;
    p.m_iStyleLiaison = 1;
    p.m_scale = source->GetScale();
    bool created = false;
    VyrCourbe* curve = doc->CreateCourbe(e, p, &created, false);
    if (!curve)
        return nullptr;
    curve->PreAlloc(points);
    const double x0 = d.xmin, x1 = d.xmax;
    for (int i = 0; i < points; ++i) {
        const double x = i == points - 1 ? x1 : x0 + (x1 - x0) * double(i) / double(points - 1);
        const double y = Evaluate(x);
        doc->AddPoint(curve, x, std::isfinite(y) ? y : 0.0, false);
        if (!std::isfinite(y))
            curve->GetVy()->ValidateAt(i, false);  // outside the model's domain
    }
    for (int diagram = 0; diagram < 2; ++diagram)
        curve->SetShownInDiagram(diagram, source->IsShownInDiagram(diagram));

    // Two notes, tied to the model's point a third of the way along: the equation with R², and
    // below it the parameters, each line short enough to stay inside a picture. Their boxes
    // stand near the top left of the fitted range, where a decay or a growth leaves room.
    double ymin = curve->GetVy()->GetVal(0), ymax = ymin;
    for (int i = 0; i < points; ++i) {
        const double y = curve->GetVy()->GetVal(i);
        ymin = std::min(ymin, y);
        ymax = std::max(ymax, y);
    }
    const wxString result = FormatResult(0, "\n");
    const wxString texts[2] = {"y = " + GetEquation() + "; " + result.AfterLast('\n'),
                               result.BeforeLast('\n')};
    for (int k = 0; k < 2; ++k) {
        wxString text = texts[k];
        text.Replace("\n", "; ");
        VyrNote* note = doc->CreateNoteEntity();
        note->SetType(VYR_NOTE_ANNOTATION);
        note->SetText(text);
        note->SetPointIndex(points / 3);
        note->SetPosition(x0 + (x1 - x0) * 0.05, ymax - (ymax - ymin) * (0.10 + 0.08 * k));
        curve->AddNote(note);
    }
    VyrObserverMsg changed(VYR_MSG_DATA_CHANGED, curve);
    doc->UpdateAllObservers(changed);
    return curve;
}
