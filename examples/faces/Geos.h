// GEOS behind owners: a context that turns its errors into exceptions, and geometries that are freed with
// their scope.
#pragma once

#define GEOS_USE_ONLY_R_API
#include <geos_c.h>

#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include "examples/faces/Grid.h"

namespace faces {

class Geos {
public:
    struct Deleter {
        GEOSContextHandle_t m_handle;
        void operator()(GEOSGeometry* pGeometry) const { GEOSGeom_destroy_r(m_handle, pGeometry); }
        void operator()(GEOSSTRtree* pTree) const { GEOSSTRtree_destroy_r(m_handle, pTree); }
    };
    using Geometry = std::unique_ptr<GEOSGeometry, Deleter>;
    using Tree = std::unique_ptr<GEOSSTRtree, Deleter>;

    Geos() : m_handle(GEOS_init_r()) {
        GEOSContext_setErrorMessageHandler_r(m_handle, KeepMessage, &m_strError);
    }
    ~Geos() { GEOS_finish_r(m_handle); }
    Geos(const Geos&) = delete;
    Geos& operator=(const Geos&) = delete;

    operator GEOSContextHandle_t() const { return m_handle; }

    /// Takes a new geometry over; a null one is the failure that GEOS has just reported.
    Geometry Own(GEOSGeometry* pGeometry) const {
        if (pGeometry == nullptr) throw std::runtime_error("GEOS: " + m_strError);
        return Geometry(pGeometry, {m_handle});
    }

    Tree NewTree() const { return Tree(GEOSSTRtree_create_r(m_handle, 10), {m_handle}); }

    /// The straight line from a to b; as an R-tree's key, the box that has them as corners.
    Geometry NewLine(GridPoint a, GridPoint b) const {
        const double coordinates[] = {static_cast<double>(a.x), static_cast<double>(a.y),
                                      static_cast<double>(b.x), static_cast<double>(b.y)};
        return Own(GEOSGeom_createLineString_r(
            m_handle, GEOSCoordSeq_copyFromBuffer_r(m_handle, coordinates, 2, 0, 0)));
    }

private:
    static void KeepMessage(const char* pszMessage, void* pError) {
        *static_cast<std::string*>(pError) = pszMessage;
    }

    GEOSContextHandle_t m_handle;
    std::string m_strError;
};

}  // namespace faces
