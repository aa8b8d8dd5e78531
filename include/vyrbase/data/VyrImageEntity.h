// An older picture record (entity kind 15), tied to a point of a curve. No section header of
// the file leads to its reader, so such records are never read from a file, nor written.
#ifndef VYRBASE_DATA_VYRIMAGEENTITY_H
#define VYRBASE_DATA_VYRIMAGEENTITY_H

#include <wx/image.h>
#include <wx/string.h>

#include "vyrbase/core/VyrEntity.h"
#include "vyrbase/core/VyrExport.h"

class VYRBASE_API VyrImageEntity : public VyrEntity {
public:
    VyrImageEntity(int oid, VyrBaseData* base);
    VyrImageEntity(const VyrImageEntity&) = default;
    VyrImageEntity& operator=(const VyrImageEntity&) = default;
    ~VyrImageEntity() override;

    int GetKind() const override { return VYR_KIND_IMAGE; }

    // The curve the picture is tied to, as the record names it ("curve"); empty on construction.
    const wxString& GetCurve() const { return m_sCurve; }
    void SetCurve(const wxString& curve) { m_sCurve = curve; }
    // Index of the point it is tied to ("index"); -1 on construction.
    int GetPointIndex() const { return m_iIndex; }
    void SetPointIndex(int index) { m_iIndex = index; }
    // Where it is drawn relative to that point ("posx", "posy"); 0 on construction.
    double GetPosX() const { return m_dPosX; }
    double GetPosY() const { return m_dPosY; }
    void SetPos(double x, double y) {
        m_dPosX = x;
        m_dPosY = y;
    }
    // Whether it is drawn ("visible"); true on construction.
    bool IsVisible() const { return m_bVisible; }
    void SetVisible(bool visible) { m_bVisible = visible; }
    // The application's placement code ("position"); 0 on construction.
    int GetPosition() const { return m_iPosition; }
    void SetPosition(int position) { m_iPosition = position; }
    // The picture ("data", JPEG in base64); not Ok() until one is set or read.
    const wxImage& GetImage() const { return m_image; }
    void SetImage(const wxImage& image) { m_image = image; }

private:
    wxString m_sCurve;
    int m_iIndex = -1;
    double m_dPosX = 0.0;
    double m_dPosY = 0.0;
    bool m_bVisible = true;
    int m_iPosition = 0;
    wxImage m_image;
};

#endif
