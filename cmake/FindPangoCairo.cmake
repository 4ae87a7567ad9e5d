# FindPangoCairo: Cairo and Pango, as PangoCairo::PangoCairo. Cairo must have its PNG, SVG and PDF surfaces.
find_package(PkgConfig REQUIRED)
pkg_check_modules(PangoCairo REQUIRED IMPORTED_TARGET GLOBAL
    pangocairo>=1.46 cairo>=1.16 cairo-png>=1.16 cairo-svg>=1.16 cairo-pdf>=1.16)
if(NOT TARGET PangoCairo::PangoCairo)
    add_library(PangoCairo::PangoCairo ALIAS PkgConfig::PangoCairo)
endif()
