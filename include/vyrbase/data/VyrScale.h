// A range in real units: xmin..xmax horizontally, ymin..ymax vertically (default 0, 1, 0, 1).
#ifndef VYRBASE_DATA_VYRSCALE_H
#define VYRBASE_DATA_VYRSCALE_H

#include "vyrbase/core/VyrExport.h"

class VYRBASE_API VyrScale {
public:
    VyrScale() = default;
    VyrScale(double xmin, double xmax, double ymin, double ymax)
        : m_dXmin(xmin), m_dXmax(xmax), m_dYmin(ymin), m_dYmax(ymax) {}
    VyrScale(const VyrScale&) = default;
    VyrScale& operator=(const VyrScale&) = default;
    virtual ~VyrScale();

    void Set(double xmin, double xmax, double ymin, double ymax) {
        m_dXmin = xmin;
        m_dXmax = xmax;
        m_dYmin = ymin;
        m_dYmax = ymax;
    }
    // True exactly when xmax > xmin and ymax > ymin (NaN makes it false).
    bool IsValid() const { return m_dXmax > m_dXmin && m_dYmax > m_dYmin; }

    double GetXmin() const { return m_dXmin; }
    double GetXmax() const { return m_dXmax; }
    double GetYmin() const { return m_dYmin; }
    double GetYmax() const { return m_dYmax; }
    void SetXmin(double v) { m_dXmin = v; }
    void SetXmax(double v) { m_dXmax = v; }
    void SetYmin(double v) { m_dYmin = v; }
    void SetYmax(double v) { m_dYmax = v; }

private:
    double m_dXmin = 0.0;
    double m_dXmax = 1.0;
    double m_dYmin = 0.0;
    double m_dYmax = 1.0;
};

#endif
