/// Handles of Cairo objects, which release the objects.
#pragma once

#include <cairo.h>

#include <memory>

namespace veldtrim {

struct SurfaceEnd {
    void operator()(cairo_surface_t* surface) const { cairo_surface_destroy(surface); }
};
using Surface = std::unique_ptr<cairo_surface_t, SurfaceEnd>;

struct PageEnd {
    void operator()(cairo_t* page) const { cairo_destroy(page); }
};
using Page = std::unique_ptr<cairo_t, PageEnd>;

} // namespace veldtrim
