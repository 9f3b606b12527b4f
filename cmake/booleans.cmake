# ORV_BOOLEANS: unions, differences and intersections of meshes are computed, by CGAL (Debian's libcgal-dev; headers only,
# Boost's along with them, nothing is linked). Without it they are stand-ins, which reports name.
#
# The part of CGAL in use, Polygon_mesh_processing, is under the GNU General Public License, version 3 or later: a program
# that is built with it may be passed on under that licence only. ORV_BOOLEANS=OFF builds without.
find_path(ORV_PATH_OF_CGAL NAMES CGAL/Polygon_mesh_processing/corefinement.h PATHS /usr/include /usr/local/include
    NO_CMAKE_FIND_ROOT_PATH)
find_path(ORV_PATH_OF_boost NAMES boost/multiprecision/cpp_int.hpp PATHS /usr/include /usr/local/include
    NO_CMAKE_FIND_ROOT_PATH)
if(ORV_PATH_OF_CGAL AND ORV_PATH_OF_boost AND NOT MSVC)
    set(ORV_CAN_CUT_SOLIDS ON)
else()
    set(ORV_CAN_CUT_SOLIDS OFF)
endif()
option(ORV_BOOLEANS "Compute booleans of meshes (libcgal-dev; makes the programs fall under the GPL)" ${ORV_CAN_CUT_SOLIDS})
if(ORV_BOOLEANS AND NOT ORV_CAN_CUT_SOLIDS)
    message(FATAL_ERROR "ORV_BOOLEANS needs the headers of CGAL and Boost: see README.md for the packages to install")
endif()
if(NOT ORV_BOOLEANS)
    message(STATUS "Booleans of meshes are stand-ins (ORV_BOOLEANS is off)")
    return()
endif()

# As in rooms.cmake: a cross compiler must see them without the rest of /usr/include.
set(ORV_BOOLEAN_HEADERS ${CMAKE_BINARY_DIR}/headers-of-booleans)
file(MAKE_DIRECTORY ${ORV_BOOLEAN_HEADERS})
foreach(library CGAL boost)
    file(CREATE_LINK ${ORV_PATH_OF_${library}}/${library} ${ORV_BOOLEAN_HEADERS}/${library} SYMBOLIC)
endforeach()

# For the one file that includes them. Numbers are Boost's on every system (no GMP, no MPFR), checks of the library stay in
# every build, since refusals must be the same in all, and rounding modes are changed while it runs. Much optimizing of so
# many templates takes time and memory and gains nothing that can be measured.
set(ORV_BOOLEAN_OPTIONS -isystem ${ORV_BOOLEAN_HEADERS} -DCGAL_DISABLE_GMP -DCGAL_DISABLE_MPFR -DCGAL_DEBUG
    -frounding-math -O1)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    list(APPEND ORV_BOOLEAN_OPTIONS -Wno-maybe-uninitialized) # GCC 12 reports an empty function object in the library
endif()
if(ORV_SANITIZE OR ORV_FUZZ)
    # the library is not what is looked at, and its templates take minutes and gigabytes otherwise
    list(APPEND ORV_BOOLEAN_OPTIONS -g0 -fno-sanitize=all)
endif()
