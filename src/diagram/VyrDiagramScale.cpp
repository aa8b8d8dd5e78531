// Scale types, per-unit ranges and zoom. Each unit record keeps the range of each type, so that
// switching type only copies; the Y ranges of all units are shaped so that every secondary
// axis puts its zero at the height of the main axis's zero.
#include "vyrbase/diagram/VyrDiagram.h"

#include <algorithm>
#include <cfloat>
#include <cmath>

#include "vyrbase/core/VyrBaseData.h"
#include "vyrbase/data/VyrCourbe.h"
#include "vyrbase/data/VyrUnit.h"
#include "vyrbase/data/VyrVecteur.h"

namespace {

const double kMinZoomFactor = 1e-5;

bool IsScaleType(int type) {
    return type >= VYR_SCALE_AUTO && type <= VYR_SCALE_MANUAL;
}

// The extremes of the valid points of `v`; false when it has none.
bool ValidExtremes(const VyrVecteur* v, double& lo, double& hi) {
    // Every point valid (as a live recording's are): the vector's own range, kept up to date
    // as points come, is the same walk's answer without walking.
    if (v->GetSize() > 0 && v->GetValidity()->FindFirstUnset() >= v->GetSize()) {
        v->GetMinMax(lo, hi);
        return true;
    }
    bool any = false;
    const double* values = v->GetArea();
    for (int i = 0; values && i < v->GetSize(); ++i) {
        if (!v->IsValidAt(i))
            continue;
        lo = any ? std::min(lo, values[i]) : values[i];
        hi = any ? std::max(hi, values[i]) : values[i];
        any = true;
    }
    return any;
}

// The range of one vector over the curves of one unit: the data for the automatic type (of
// the valid points only when `validOnly` and there are any), the curve's stored standard
// bounds for the standard type.
void RangeOf(const VyrCourbe* c, bool onX, int type, bool validOnly, double& lo, double& hi) {
    const VyrVecteur* v = onX ? c->GetVx() : c->GetVy();
    if (type == VYR_SCALE_STANDARD) {
        const VyrScale& s = c->GetScale();
        lo = onX ? s.GetXmin() : s.GetYmin();
        hi = onX ? s.GetXmax() : s.GetYmax();
    } else if (!validOnly || !ValidExtremes(v, lo, hi)) {
        v->GetMinMax(lo, hi);
    }
}

}  // namespace

VyrScale* VyrDiagram::GetScale(int type) {
    return IsScaleType(type) ? &m_scales[type] : nullptr;
}

VyrScale* VyrDiagram::GetScale() {
    return GetScale(m_iTypeScale);
}

void VyrDiagram::UpdateScale(int type) {
    if (type != VYR_SCALE_AUTO && type != VYR_SCALE_STANDARD)
        return;

    // 1. The distinct units of the plotted curves (exact comparison), in order of discovery:
    // the vectors' own strings, in arrays kept from one call to the next, since a live
    // acquisition comes here at every point.
    std::vector<const wxString*>& unitsX = m_aScaleUnits[0];
    std::vector<const wxString*>& unitsY = m_aScaleUnits[1];
    auto addUnit = [](std::vector<const wxString*>& units, const VyrVecteur* v) {
        if (!v)
            return;
        for (const wxString* known : units)
            if (*known == v->GetUnite())
                return;
        units.push_back(&v->GetUnite());
    };
    unitsX.clear();
    unitsY.clear();
    for (VyrCourbe* c : m_aPlottedCourbes) {
        addUnit(unitsX, c->GetVx());
        addUnit(unitsY, c->GetVy());
    }

    // The extent of the enabled curves of one unit on one axis (DBL_MAX, -DBL_MAX when none).
    auto extent = [&](const wxString& unit, bool onX, double& lo, double& hi) {
        lo = DBL_MAX;
        hi = -DBL_MAX;
        for (VyrCourbe* c : m_aPlottedCourbes) {
            const VyrVecteur* v = onX ? c->GetVx() : c->GetVy();
            if (!v || v->GetUnite() != unit || !c->IsEnabled())
                continue;
            double cmin, cmax;
            RangeOf(c, onX, type, m_bValidRangesOnly, cmin, cmax);
            if (cmin < lo)
                lo = cmin;
            if (cmax > hi)
                hi = cmax;
        }
    };

    // 2. X units: the plain extent, widened only when it is a single value.
    for (const wxString* unitX : unitsX) {
        const wxString& unit = *unitX;
        double lo, hi;
        extent(unit, true, lo, hi);
        if (lo == hi) {
            lo -= 0.1;
            hi += 0.1;
        }
        if (VyrUnit* u = FindUnitX(unit)) {
            u->SetMin(type, lo);
            u->SetMax(type, hi);
        }
    }

    // 3. Y units: a 5 % margin (0.1 for a single value, replacing the margin), then the
    // extremes relative to each unit's largest magnitude.
    double gmin = DBL_MAX;
    double gmax = -DBL_MAX;
    for (const wxString* unitY : unitsY) {
        const wxString& unit = *unitY;
        double lo, hi;
        extent(unit, false, lo, hi);
        const double margin = lo == hi ? 0.1 : (hi - lo) * 0.05;
        lo -= margin;
        hi += margin;
        if (VyrUnit* u = FindUnitY(unit)) {
            u->SetMin(type, lo);
            u->SetMax(type, hi);
        }
        const double m = std::max(std::fabs(hi), std::fabs(lo));
        if (lo / m < gmin)
            gmin = lo / m;
        if (hi / m > gmax)
            gmax = hi / m;
    }

    // 4. Every Y unit gets the same relative extremes, which puts zero at one common height.
    for (const wxString* unit : unitsY) {
        VyrUnit* u = FindUnitY(*unit);
        if (!u)
            continue;
        const double m = std::max(std::fabs(u->GetMax(type)), std::fabs(u->GetMin(type)));
        double newMin = gmin * m;
        double newMax = gmax * m;
        if (newMin == newMax) {
            newMin -= 0.1;
            newMax += 0.1;
        }
        u->SetMin(type, newMin);
        u->SetMax(type, newMax);
        // A unit never set by hand starts its manual range from here.
        if (u->GetMin(VYR_SCALE_MANUAL) == 0.0 && u->GetMax(VYR_SCALE_MANUAL) == 0.0) {
            u->SetMin(VYR_SCALE_MANUAL, newMin);
            u->SetMax(VYR_SCALE_MANUAL, newMax);
        }
    }

    // 5. The base scales from the main units. Kept: without a unit the fallback goes into the
    // scale of the current type, not of the type being updated.
    if (!HasOwnRange(m_sUx)) {
        m_scales[m_iTypeScale].SetXmin(0.0);
        m_scales[m_iTypeScale].SetXmax(1.05);
    } else if (const VyrUnit* u = FindUnitX(m_sUx)) {
        m_scales[type].SetXmin(u->GetMin(type));
        m_scales[type].SetXmax(u->GetMax(type));
    }
    if (!HasOwnRange(m_sUy)) {
        m_scales[m_iTypeScale].SetYmin(0.0);
        m_scales[m_iTypeScale].SetYmax(1.05);
    } else if (const VyrUnit* u = FindUnitY(m_sUy)) {
        m_scales[type].SetYmin(u->GetMin(type));
        m_scales[type].SetYmax(u->GetMax(type));
    }
}

void VyrDiagram::SetTypeScale(int type) {
    if (!IsScaleType(type))
        return;
    m_iTypeScale = type;
    // A manual range that was never set (or is reversed) starts from the automatic one.
    auto resetEmptyManual = [type](VyrUnit* u) {
        if (type == VYR_SCALE_MANUAL &&
            u->GetMin(VYR_SCALE_MANUAL) >= u->GetMax(VYR_SCALE_MANUAL)) {
            u->SetMin(VYR_SCALE_MANUAL, u->GetMin(VYR_SCALE_AUTO));
            u->SetMax(VYR_SCALE_MANUAL, u->GetMax(VYR_SCALE_AUTO));
        }
    };
    if (HasOwnRange(m_sUx)) {
        if (VyrUnit* u = FindUnitX(m_sUx)) {
            resetEmptyManual(u);
            m_scales[type].SetXmin(u->GetMin(type));
            m_scales[type].SetXmax(u->GetMax(type));
        }
    }
    if (HasOwnRange(m_sUy)) {
        if (VyrUnit* u = FindUnitY(m_sUy)) {
            resetEmptyManual(u);
            m_scales[type].SetYmin(u->GetMin(type));
            m_scales[type].SetYmax(u->GetMax(type));
        }
    }
    m_currentScale = m_scales[type];
    ZoomNormal();
    UpdateWorld();
    if (type == VYR_SCALE_MANUAL)
        Notify(VYR_MSG_SCALE_TYPE_CHANGED, nullptr);
}

void VyrDiagram::AutoStandardToManu() {
    if (m_iTypeScale != VYR_SCALE_AUTO && m_iTypeScale != VYR_SCALE_STANDARD)
        return;
    for (VyrStrToUnitMap* map : {&m_mapUnitX, &m_mapUnitY}) {
        for (auto& entry : *map) {
            if (VyrUnit* u = entry.second) {
                u->SetMin(VYR_SCALE_MANUAL, u->GetMin(m_iTypeScale));
                u->SetMax(VYR_SCALE_MANUAL, u->GetMax(m_iTypeScale));
            }
        }
    }
    SetTypeScale(VYR_SCALE_MANUAL);
}

void VyrDiagram::SetManualScale(VyrScale* scale, bool propagate) {
    if (!scale || !scale->IsValid())
        return;
    // The caller may pass the manual base scale itself: work on a copy.
    const VyrScale s = *scale;
    m_scales[VYR_SCALE_MANUAL] = s;
    if (HasOwnRange(m_sUx)) {
        if (VyrUnit* u = FindUnitX(m_sUx)) {
            u->SetMin(VYR_SCALE_MANUAL, s.GetXmin());
            u->SetMax(VYR_SCALE_MANUAL, s.GetXmax());
        }
    }
    if (HasOwnRange(m_sUy)) {
        if (VyrUnit* u = FindUnitY(m_sUy)) {
            const double ymin = s.GetYmin();
            const double ymax = s.GetYmax();
            u->SetMin(VYR_SCALE_MANUAL, ymin);
            u->SetMax(VYR_SCALE_MANUAL, ymax);
            // The height of zero as a fraction of the span, measured from the larger end.
            const bool topHeavy = std::fabs(ymax) > std::fabs(ymin);
            const double r = (topHeavy ? ymax : ymin) / (ymax - ymin);
            if (propagate) {
                for (const wxString& unit : m_asAllUnits) {
                    if (unit == m_sUy)
                        continue;
                    VyrUnit* other = FindUnitY(unit);
                    if (!other)
                        continue;
                    // Each secondary unit keeps its span and moves its zero to the main one's.
                    const double span =
                        other->GetMax(VYR_SCALE_MANUAL) - other->GetMin(VYR_SCALE_MANUAL);
                    if (topHeavy) {
                        other->SetMax(VYR_SCALE_MANUAL, span * r);
                        other->SetMin(VYR_SCALE_MANUAL, span * r - span);
                    } else {
                        other->SetMin(VYR_SCALE_MANUAL, span * r);
                        other->SetMax(VYR_SCALE_MANUAL, span * r + span);
                    }
                }
            }
        }
    }
    SetTypeScale(VYR_SCALE_MANUAL);
}

void VyrDiagram::UpdateDiagrams(double xmin, double xmax) {
    if (!m_pBase)
        return;
    VyrScale scale(xmin, xmax, 0.0, 1.0);
    for (int i = 0; i < 2; ++i) {
        VyrDiagram* other = m_pBase->GetDiagram(i);
        if (!other || other == this || other->m_sUx != m_sUx)
            continue;
        // A diagram zoomed horizontally keeps its own abscissa.
        if (!other->IsZoomedX() && !IsZoomedX()) {
            scale.SetYmin(other->m_currentScale.GetYmin());
            scale.SetYmax(other->m_currentScale.GetYmax());
            other->SetManualScale(&scale, false);
        }
    }
}

bool VyrDiagram::AxeSuivantY() {
    static const wxString kNoUnit = "s.u.";
    const size_t count = m_asYUnits.size();
    if (count < 2)
        return false;
    size_t withUnit = 0;
    for (const wxString& unit : m_asYUnits)
        if (unit != kNoUnit)
            ++withUnit;
    if (withUnit < 2)
        return false;
    const int found = m_asYUnits.Index(m_sUy, true);
    size_t i = found == wxNOT_FOUND ? 0 : static_cast<size_t>(found);
    do {
        i = (i + 1) % count;
    } while (m_asYUnits[i] == kNoUnit);
    if (m_asYUnits[i] == m_sUy)
        return false;
    m_sUy = m_asYUnits[i];
    UpdateCourbes();
    UpdateScale(VYR_SCALE_AUTO);
    UpdateScale(VYR_SCALE_STANDARD);
    SetTypeScale(m_iTypeScale);
    return true;
}

// ---- Zoom -----------------------------------------------------------------------------------

void VyrDiagram::ZoomNormal() {
    m_currentScale = m_scales[m_iTypeScale];
    m_dZoomKx = 1.0;
    m_dZoomOx = 0.0;
    m_dZoomKy = 1.0;
    m_dZoomOy = 0.0;
    UpdateWorld();
}

void VyrDiagram::SetZoom(VyrScale* zoom) {
    if (!zoom || !(zoom->GetXmax() > zoom->GetXmin()) || !(zoom->GetYmax() > zoom->GetYmin()))
        return;
    const VyrScale& b = m_scales[m_iTypeScale];
    const double kx = (zoom->GetXmax() - zoom->GetXmin()) / (b.GetXmax() - b.GetXmin());
    const double ox = zoom->GetXmax() - b.GetXmax() * kx;
    const double ky = (zoom->GetYmax() - zoom->GetYmin()) / (b.GetYmax() - b.GetYmin());
    const double oy = zoom->GetYmax() - b.GetYmax() * ky;
    if (!(kx > kMinZoomFactor && ky > kMinZoomFactor))
        return;
    m_dZoomKx = kx;
    m_dZoomOx = ox;
    m_dZoomKy = ky;
    m_dZoomOy = oy;
    m_currentScale.Set(kx * b.GetXmin() + ox, kx * b.GetXmax() + ox, ky * b.GetYmin() + oy,
                       ky * b.GetYmax() + oy);
    UpdateWorld();
}

void VyrDiagram::SetZoomPourcent(double percentX, double percentY, double, double) {
    const double kx = percentX / 100.0;
    const double ky = percentY / 100.0;
    if (!(kx > kMinZoomFactor && ky > kMinZoomFactor))
        return;
    const VyrScale& b = m_scales[m_iTypeScale];
    m_dZoomKx = kx;
    m_dZoomOx = 0.0;
    m_dZoomKy = ky;
    m_dZoomOy = 0.0;
    m_currentScale.Set(kx * b.GetXmin(), kx * b.GetXmax(), ky * b.GetYmin(), ky * b.GetYmax());
    UpdateWorld();
}

bool VyrDiagram::IsZoomed() const {
    // Written as a negation so that a NaN factor counts as zoomed.
    return !(m_dZoomKx == 1.0 && m_dZoomOx == 0.0 && m_dZoomKy == 1.0 && m_dZoomOy == 0.0);
}

bool VyrDiagram::IsZoomedX() const {
    return !(m_dZoomKx == 1.0 && m_dZoomOx == 0.0);
}

bool VyrDiagram::HasOwnRange(const wxString& unit) const {
    // The one place where a quantity without a unit may get the range its values ask for.
    return !unit.empty() || HasOption(VYR_OPTION_UNITLESS_RANGE);
}

void VyrDiagram::SetOptions(int options) {
    const bool rangesChange =
        (options & VYR_OPTION_UNITLESS_RANGE) != (m_iOptions & VYR_OPTION_UNITLESS_RANGE);
    m_iOptions = options & VYR_OPTIONS_EXPLAINED;
    if (rangesChange) {
        UpdateScale(VYR_SCALE_AUTO);
        UpdateScale(VYR_SCALE_STANDARD);
        SetTypeScale(m_iTypeScale);
    }
}
