// Construction, copy and destruction of a diagram.
#include "vyrbase/diagram/VyrDiagram.h"

#include "vyrbase/core/VyrBaseData.h"
#include "vyrbase/core/VyrResourceText.h"
#include "vyrbase/data/VyrUnit.h"

namespace {
const size_t kInitialBuckets = 101;
}

VyrDiagram::VyrDiagram(VyrBaseData* base, int index)
    : m_colourBackground(255, 255, 255),
      m_colourAxis(0, 0, 0),
      m_pBase(base),
      m_mapUnitX(kInitialBuckets),
      m_mapUnitY(kInitialBuckets),
      m_iIndex(index),
      m_sSecondsSymbol(VyrResourceText::Get("IDS_SYMB_SECONDE")) {
    // Plot and hit rectangles stay empty, so no transform exists until the first Move.
    m_ptOrigin = wxPoint(0, 0);
    Recompute(false);
    // Last: registering runs OnInitialUpdateObserver, which fills the diagram from the document.
    if (m_pBase)
        m_pBase->AddObserver(this);
}

VyrDiagram::VyrDiagram(const VyrDiagram& other) : VyrObserver(other), VyrObservable(other) {
    CopyFrom(other);
}

VyrDiagram& VyrDiagram::operator=(const VyrDiagram& other) {
    if (this != &other) {
        VyrObserver::operator=(other);
        VyrObservable::operator=(other);
        DeleteMapUnit();
        CopyFrom(other);
    }
    return *this;
}

VyrDiagram::~VyrDiagram() {
    Notify(VYR_MSG_DIAGRAM_DESTROYED, this);
    if (m_pBase)
        m_pBase->RemoveObserver(this);
    m_listShown.Clear();
    DeleteMapUnit();
}

void VyrDiagram::CopyFrom(const VyrDiagram& other) {
    m_asAllUnits = other.m_asAllUnits;
    m_asYUnits = other.m_asYUnits;
    m_sGrdX = other.m_sGrdX;
    m_colourBackground = other.m_colourBackground;
    m_colourAxis = other.m_colourAxis;
    m_bGrid = other.m_bGrid;
    m_bTimeLabels = other.m_bTimeLabels;
    m_bAllCurvesColour = other.m_bAllCurvesColour;
    m_bPrefixes = other.m_bPrefixes;
    m_iLabelsAbove = other.m_iLabelsAbove;
    m_iLineScale = other.m_iLineScale;
    m_bSpectrum = other.m_bSpectrum;
    m_bBadge = other.m_bBadge;
    m_aPlottedCourbes = other.m_aPlottedCourbes;
    m_bXYMode = other.m_bXYMode;
    m_dAx = other.m_dAx;
    m_dBx = other.m_dBx;
    m_dAy = other.m_dAy;
    m_dBy = other.m_dBy;
    m_ptOrigin = other.m_ptOrigin;
    m_iTypeScale = other.m_iTypeScale;
    for (int t = 0; t < 3; ++t)
        m_scales[t] = other.m_scales[t];
    m_currentScale = other.m_currentScale;
    m_sUx = other.m_sUx;
    m_sUy = other.m_sUy;
    m_pActiveExperience = other.m_pActiveExperience;
    m_pActiveCourbe = other.m_pActiveCourbe;
    m_pBase = other.m_pBase;
    m_listShown.Clear();
    for (auto* node = other.m_listShown.GetFirst(); node; node = node->GetNext())
        m_listShown.Append(node->GetData());
    m_rectPlot = other.m_rectPlot;
    m_rectHit = other.m_rectHit;
    m_pGraphObj = other.m_pGraphObj;
    // The range records are duplicated so that each diagram frees its own.
    for (const auto& entry : other.m_mapUnitX)
        m_mapUnitX[entry.first] = entry.second ? new VyrUnit(*entry.second) : nullptr;
    for (const auto& entry : other.m_mapUnitY)
        m_mapUnitY[entry.first] = entry.second ? new VyrUnit(*entry.second) : nullptr;
    m_dZoomKx = other.m_dZoomKx;
    m_dZoomOx = other.m_dZoomOx;
    m_dZoomKy = other.m_dZoomKy;
    m_dZoomOy = other.m_dZoomOy;
    m_iIndex = other.m_iIndex;
    m_sSecondsSymbol = other.m_sSecondsSymbol;
    m_bActive = other.m_bActive;
    m_pNoteTitre = other.m_pNoteTitre;
    // The copy runs UpdateUnits in full the first time.
    m_unitsShape = UnitsShape();
    m_iOptions = other.m_iOptions;
    m_rectArea = other.m_rectArea;
}

void VyrDiagram::DeleteMapUnit() {
    for (auto& entry : m_mapUnitX)
        delete entry.second;
    m_mapUnitX.clear();
    for (auto& entry : m_mapUnitY)
        delete entry.second;
    m_mapUnitY.clear();
}

VyrUnit* VyrDiagram::FindUnitX(const wxString& unit) const {
    auto it = m_mapUnitX.find(unit);
    return it == m_mapUnitX.end() ? nullptr : it->second;
}

VyrUnit* VyrDiagram::FindUnitY(const wxString& unit) const {
    auto it = m_mapUnitY.find(unit);
    return it == m_mapUnitY.end() ? nullptr : it->second;
}
