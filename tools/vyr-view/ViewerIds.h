// Menu and control identifiers of the viewer that the toolkit does not provide.
#ifndef VYR_VIEW_VIEWERIDS_H
#define VYR_VIEW_VIEWERIDS_H

#include <wx/defs.h>

enum ViewerId {
    ID_EXPORT = wxID_HIGHEST + 1,
    ID_ZOOM_NORMAL,
    ID_NEXT_Y_UNIT,
    ID_TWO_DIAGRAMS,
    ID_SHOW_GRID,
    ID_FIT,
    ID_PLAIN_PICTURE,
};

#endif
