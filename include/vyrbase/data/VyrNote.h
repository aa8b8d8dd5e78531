// An annotation (entity kind 4): a short text tied to a point of a curve, or a diagram's title.
#ifndef VYRBASE_DATA_VYRNOTE_H
#define VYRBASE_DATA_VYRNOTE_H

#include <wx/string.h>

#include "vyrbase/core/VyrEntity.h"
#include "vyrbase/core/VyrExport.h"

// VyrNote::GetType values.
enum VyrNoteType {
    VYR_NOTE_TITRE = 1,       // a diagram's title
    VYR_NOTE_ANNOTATION = 2,  // a curve annotation
    VYR_NOTE_RECTANGLE_C = 3  // the third rectangle form (name beginning "rectangle_c")
};

// VyrNote::GetState values.
enum VyrNoteState { VYR_NOTE_NORMAL = 0, VYR_NOTE_SELECTED = 1, VYR_NOTE_MOVING = 2 };

class VYRBASE_API VyrNote : public VyrEntity {
public:
    VyrNote(int oid, VyrBaseData* base);
    ~VyrNote() override;

    int GetKind() const override { return VYR_KIND_NOTE; }

    const wxString& GetText() const { return m_sText; }
    void SetText(const wxString& text) { m_sText = text; }
    // The box position: world coordinates in the curve's units for a curve note; fractions of
    // the plot rectangle (from its top left corner) for a title.
    double GetPositionX() const { return m_dPositionX; }
    double GetPositionY() const { return m_dPositionY; }
    void SetPosition(double x, double y) {
        m_dPositionX = x;
        m_dPositionY = y;
    }
    // VyrNoteType, or -1 until known.
    int GetType() const { return m_iType; }
    void SetType(int type) { m_iType = type; }
    // Index of the annotated point in the curve's vectors, or -1.
    int GetPointIndex() const { return m_iPointIndex; }
    void SetPointIndex(int index) { m_iPointIndex = index; }
    // Whether the title is drawn.
    bool IsShown() const { return m_bShown; }
    void SetShown(bool shown) { m_bShown = shown; }
    // VyrNoteState.
    int GetState() const { return m_iState; }
    void SetState(int state) { m_iState = state; }
    // The box size in pixels: 200 x 30 until painting stores the measured size.
    int GetBoxWidth() const { return m_iBoxWidth; }
    int GetBoxHeight() const { return m_iBoxHeight; }
    void SetBoxSize(int width, int height) {
        m_iBoxWidth = width;
        m_iBoxHeight = height;
    }

private:
    wxString m_sText;
    double m_dPositionX = 0.0;
    double m_dPositionY = 0.0;
    int m_iType = -1;
    int m_iPointIndex = -1;
    bool m_bShown = true;
    int m_iState = VYR_NOTE_NORMAL;
    int m_iBoxWidth = 200;
    int m_iBoxHeight = 30;
};

#endif
