#include "FileDrop.h"

#include <wx/docview.h>

bool FileDrop::OnDropFiles(wxCoord, wxCoord, const wxArrayString& files) {
    bool any = false;
    for (const wxString& file : files)
        any |= m_manager->CreateDocument(file, wxDOC_SILENT) != nullptr;
    return any;
}
