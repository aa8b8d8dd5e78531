#include "PictureOptions.h"

#include "vyrbase/diagram/VyrDiagram.h"

namespace vyrtools {

bool ApplyPictureOptions(VyrDiagram& diagram, const PictureOptions& options, wxString& reason) {
    if (!options.yUnit.empty() && options.yUnit != diagram.GetUy()) {
        const wxArrayString& units = diagram.GetYUnits();
        if (units.Index(options.yUnit, true) == wxNOT_FOUND) {
            wxString known;
            for (const wxString& unit : units)
                known += (known.empty() ? "" : ", ") + unit;
            reason = wxString::Format("the diagram has no curve in %s (its units: %s)",
                                      options.yUnit, known.empty() ? wxString("none") : known);
            return false;
        }
        diagram.SetUy(options.yUnit);
    }
    int bits = options.plain ? 0 : VYR_OPTIONS_EXPLAINED;
    if (!options.legend)
        bits &= ~VYR_OPTION_LEGEND;
    diagram.SetOptions(bits);
    return true;
}

}  // namespace vyrtools
