# cairo with PDF and FreeType fonts, and fontconfig: the target Cairo::cairo.
find_path(Cairo_INCLUDE_DIR cairo-pdf.h PATH_SUFFIXES cairo)
find_path(Cairo_FREETYPE_INCLUDE_DIR ft2build.h PATH_SUFFIXES freetype2)
find_path(Cairo_FONTCONFIG_INCLUDE_DIR fontconfig/fontconfig.h)
find_library(Cairo_LIBRARY cairo)
find_library(Cairo_FONTCONFIG_LIBRARY fontconfig)
if(Cairo_INCLUDE_DIR)
  file(STRINGS "${Cairo_INCLUDE_DIR}/cairo-version.h" lines REGEX "^#define CAIRO_VERSION_(MAJOR|MINOR|MICRO) ")
  list(TRANSFORM lines REPLACE "[^0-9]" "")
  list(JOIN lines "." Cairo_VERSION)
endif()
include(FindPackageHandleStandardArgs)
find_package_handle_standard_args(Cairo VERSION_VAR Cairo_VERSION REQUIRED_VARS
  Cairo_LIBRARY Cairo_INCLUDE_DIR Cairo_FREETYPE_INCLUDE_DIR Cairo_FONTCONFIG_LIBRARY Cairo_FONTCONFIG_INCLUDE_DIR)
mark_as_advanced(Cairo_LIBRARY Cairo_INCLUDE_DIR Cairo_FREETYPE_INCLUDE_DIR Cairo_FONTCONFIG_LIBRARY
  Cairo_FONTCONFIG_INCLUDE_DIR)
if(Cairo_FOUND AND NOT TARGET Cairo::cairo)
  add_library(Cairo::cairo INTERFACE IMPORTED)
  target_include_directories(Cairo::cairo INTERFACE
    "${Cairo_INCLUDE_DIR}" "${Cairo_FREETYPE_INCLUDE_DIR}" "${Cairo_FONTCONFIG_INCLUDE_DIR}")
  target_link_libraries(Cairo::cairo INTERFACE "${Cairo_LIBRARY}" "${Cairo_FONTCONFIG_LIBRARY}")
endif()
