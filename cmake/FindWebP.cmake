# Finds libwebp with its animation reader and writer and defines WebP::WebP, WebP::Demux and WebP::Mux.

find_path(WebP_INCLUDE_DIR webp/mux.h)
find_library(WebP_LIBRARY webp)
find_library(WebP_DEMUX_LIBRARY webpdemux)
find_library(WebP_MUX_LIBRARY webpmux)

include(FindPackageHandleStandardArgs)
find_package_handle_standard_args(WebP
  REQUIRED_VARS WebP_LIBRARY WebP_DEMUX_LIBRARY WebP_MUX_LIBRARY WebP_INCLUDE_DIR
  REASON_FAILURE_MESSAGE "libwebp is missing. On Debian: apt-get install libwebp-dev")
mark_as_advanced(WebP_INCLUDE_DIR WebP_LIBRARY WebP_DEMUX_LIBRARY WebP_MUX_LIBRARY)

if(WebP_FOUND AND NOT TARGET WebP::WebP)
  add_library(WebP::WebP UNKNOWN IMPORTED)
  set_target_properties(WebP::WebP PROPERTIES
    IMPORTED_LOCATION ${WebP_LIBRARY}
    INTERFACE_INCLUDE_DIRECTORIES ${WebP_INCLUDE_DIR})
  foreach(part Demux Mux)
    string(TOUPPER ${part} upper)
    add_library(WebP::${part} UNKNOWN IMPORTED)
    set_target_properties(WebP::${part} PROPERTIES
      IMPORTED_LOCATION ${WebP_${upper}_LIBRARY}
      INTERFACE_LINK_LIBRARIES WebP::WebP)
  endforeach()
endif()
