// A curve (entity kind 2): a pair of vectors X and Y (entities of the document, not owned by
// the curve), its drawing style and the notes attached to it. A curve and its sister (the
// counterpart with X and Y exchanged, made for XY display) always look alike: the style setters
// write into the sister too.
#ifndef VYRBASE_DATA_VYRCOURBE_H
#define VYRBASE_DATA_VYRCOURBE_H

#include <wx/colour.h>
#include <wx/string.h>

#include "vyrbase/core/VyrEntity.h"
#include "vyrbase/core/VyrExport.h"
#include "vyrbase/core/VyrLists.h"
#include "vyrbase/data/VyrScale.h"

class VyrNote;
class VyrVecteur;

class VYRBASE_API VyrCourbe : public VyrEntity {
public:
    VyrCourbe(int oid, VyrBaseData* base);
    VyrCourbe(const VyrCourbe&) = default;
    VyrCourbe& operator=(const VyrCourbe&) = default;
    // Clears the sister's back link.
    ~VyrCourbe() override;

    int GetKind() const override { return VYR_KIND_COURBE; }

    VyrVecteur* GetVx() const { return m_pVx; }
    VyrVecteur* GetVy() const { return m_pVy; }
    void SetVx(VyrVecteur* v) { m_pVx = v; }
    void SetVy(VyrVecteur* v) { m_pVy = v; }

    // The size of X (0 without X).
    unsigned GetSize() const;
    // Indices below both sizes at which X and Y are both valid (0 when a vector is missing).
    unsigned GetTrueSize() const;
    // Resize / PreAlloc on each present vector.
    void SetSize(int n);
    void PreAlloc(int n);

    // The free text of the curve (the "commentaire" of the file).
    const wxString& GetText() const { return m_sText; }
    void SetText(const wxString& text) { m_sText = text; }

    // 1 marks a curve made by a diagram for XY display.
    int GetXYDisplay() const { return m_iXYDisplay; }
    void SetXYDisplay(int marker) { m_iXYDisplay = marker; }
    // Set by the XY builders when CreateCourbe reports a new curve.
    int GetNewlyCreated() const { return m_iNewlyCreated; }
    void SetNewlyCreated(int flag) { m_iNewlyCreated = flag; }
    // Free for the application; reset to 0.0 by CreateCourbe.
    double GetUserValue() const { return m_dUserValue; }
    void SetUserValue(double v) { m_dUserValue = v; }
    int GetUserTag() const { return m_iUserTag; }
    void SetUserTag(int tag) { m_iUserTag = tag; }

    // The curve's standard ranges (saved with the curve).
    VyrScale& GetScale() { return m_scale; }
    const VyrScale& GetScale() const { return m_scale; }

    // Only enabled curves take part in a diagram's automatic and standard ranges.
    bool IsEnabled() const { return m_bEnabled; }
    void SetEnabled(bool enabled) { m_bEnabled = enabled; }

    // Shown in diagram index 0 or 1 (false for another index). Kept equal to the diagram's
    // shown list by the diagram.
    bool IsShownInDiagram(int index) const;
    void SetShownInDiagram(int index, bool shown);

    const wxColour& GetColor() const { return m_colour; }
    void SetColor(const wxColour& colour);
    int GetWidth() const { return m_iWidth; }
    void SetWidth(int width);
    int GetStylePoint() const { return m_iStylePoint; }
    void SetStylePoint(int style);
    int GetStyleLiaison() const { return m_iStyleLiaison; }
    void SetStyleLiaison(int style);

    VyrCourbe* GetCourbeSoeur() const { return m_pSoeur; }
    // Keeps the link mutual: the old sister loses its back link, the new one points here.
    void SetCourbeSoeur(VyrCourbe* sister);

    // The notes attached to the curve (document entities; neither call deletes).
    void AddNote(VyrNote* note);
    void RemoveNote(VyrNote* note);
    int GetNotesCount() const;
    wxVyrListNoteNode* GetFirstNote();
    VyrNote* GetNextNote(wxVyrListNoteNode** cursor);
    const VyrListNote& GetNotes() const { return m_listNotes; }

    // "%s(%s)" of the Y then X quantity names, e.g. U(t); wrapped in U+200E marks when the
    // application's layout is right to left.
    wxString GetName() const;

    // Linear interpolation of Y at x (absolute X tolerance 2^-23). `start` is in and out: the
    // bracket found, so that a caller walking increasing x avoids searching from 0 each time.
    bool InterpolateEx(double x, double& y, bool& interpolated, int* index, int& start);
    // InterpolateEx with a start of 0.
    bool Interpolate(double x, double& y, bool& interpolated, int* index);

private:
    wxString m_sText;
    int m_iXYDisplay = 0;
    VyrScale m_scale;
    int m_iNewlyCreated = 0;
    bool m_bEnabled = true;
    bool m_bShownDiagram[2] = {false, false};
    int m_iUserTag = 0;
    double m_dUserValue = 0.0;
    VyrVecteur* m_pVx = nullptr;
    VyrVecteur* m_pVy = nullptr;
    VyrListNote m_listNotes;
    wxColour m_colour;
    int m_iWidth = 1;
    int m_iStylePoint = 1;
    int m_iStyleLiaison = 1;
    VyrCourbe* m_pSoeur = nullptr;
};

#endif
