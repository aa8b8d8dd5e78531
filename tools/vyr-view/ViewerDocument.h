// The toolkit document of the viewer: it owns the library's document (VyrBaseData) bound to
// itself, so that the library's undoable deletions go to this document's command processor and
// mark it modified. It opens and saves files, keeps the user's selection and keeps one view per
// diagram in use (one or two).
#ifndef VYR_VIEW_VIEWERDOCUMENT_H
#define VYR_VIEW_VIEWERDOCUMENT_H

#include <memory>

#include <wx/docview.h>

#include "Selection.h"
#include "vyrbase/core/VyrBaseData.h"

class DiagramView;
class DocumentFrame;
class LiveFollow;
class VyrCourbe;
class VyrNote;

class ViewerDocument : public wxDocument {
public:
    ViewerDocument();
    ~ViewerDocument() override;

    VyrBaseData& GetData() { return m_data; }

    // Makes this the process-wide active document, on which the diagram's static operations,
    // the interval tools' painting and hit test, and the undo commands act.
    void MakeActive();

    // The frame all views of this document share (created by the first view).
    DocumentFrame* GetFrame() const { return m_frame; }
    void SetFrame(DocumentFrame* frame) { m_frame = frame; }
    // The view of diagram `index`, or null.
    DiagramView* FindView(int index) const;
    // Creates or deletes the view of diagram 1 so that there is one view per diagram in use.
    void SyncDiagramViews();

    // The selection: selecting a curve or an experiment also makes it the diagram's active one;
    // selecting a note shows it selected (note state 1) and returns the previous one to normal.
    const Selection& GetSelection() const { return m_selection; }
    void Select(const Selection& selection);
    // The selected entities, or null when the selection is something else or is gone.
    VyrCourbe* GetSelectedCourbe();
    VyrNote* GetSelectedNote(VyrCourbe** courbe);
    // A short description of the selection ("curve U(t)"), empty when nothing is selected.
    wxString DescribeSelection();
    // Deletes the selected curve, experiment or note through the library's undoable commands.
    bool DeleteSelection();

    // Opens a lab document, or a text table (by its extension) as vyr import reads it; a
    // table's document is named as its lab document beside it (IN.vyr) and counts as never
    // saved, so that saving asks where and never replaces the table.
    bool OnOpenDocument(const wxString& file) override;

    // A recording shown live in this document (vyr-view --follow), which then owns it; it stops
    // when the document is emptied or closed. Null when the document follows nothing.
    void Follow(std::unique_ptr<LiveFollow> follow);
    LiveFollow* GetFollow() const { return m_follow.get(); }

protected:
    bool DoOpenDocument(const wxString& file) override;
    bool DoSaveDocument(const wxString& file) override;
    bool DeleteContents() override;

private:
    // Commands still held by the processor point to entities that Load or Delete frees: the
    // history goes before the document is emptied.
    void ForgetHistory();

    VyrBaseData m_data;
    DocumentFrame* m_frame = nullptr;
    Selection m_selection;
    std::unique_ptr<LiveFollow> m_follow;

    wxDECLARE_DYNAMIC_CLASS(ViewerDocument);
    wxDECLARE_NO_COPY_CLASS(ViewerDocument);
};

#endif
