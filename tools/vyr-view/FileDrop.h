// Opens the document files dropped on a window through the document manager, as File > Open
// would.
#ifndef VYR_VIEW_FILEDROP_H
#define VYR_VIEW_FILEDROP_H

#include <wx/dnd.h>

class wxDocManager;

class FileDrop : public wxFileDropTarget {
public:
    explicit FileDrop(wxDocManager* manager) : m_manager(manager) {}
    bool OnDropFiles(wxCoord x, wxCoord y, const wxArrayString& files) override;

private:
    wxDocManager* m_manager;
};

#endif
