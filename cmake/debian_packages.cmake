# What CPack makes the Debian packages libzelvan1 and libzelvan-dev of, for ./dev package. It is
# read where ZELVAN_PACKAGES asks for it, and with the prefix /usr. The lists of symbols and of the
# libraries that are needed come from Debian's own tools and the built library, see
# tools/package.sh.
include(GNUInstallDirs)
set(runtime_package libzelvan${PROJECT_VERSION_MAJOR})
set(development_package libzelvan-dev)
set(revision 1)

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGING_INSTALL_PREFIX ${CMAKE_INSTALL_PREFIX})
set(CPACK_COMPONENTS_ALL Runtime Development)  # the component Licence goes into their documents
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_STRIP_FILES ON)

# Whoever distributes the packages puts an address of theirs here.
set(CPACK_DEBIAN_PACKAGE_MAINTAINER "The zelvan authors <authors@zelvan.example>")
set(CPACK_DEBIAN_PACKAGE_SOURCE zelvan)
set(CPACK_DEBIAN_PACKAGE_RELEASE ${revision})
set(CPACK_DEBIAN_COMPRESSION_TYPE xz)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "")  # each package has its own
string(CONCAT description
       "Twelve small families of functions that stand side by side: affine\n"
       "transforms, pick regions, polygon clipping, distances and conic arcs,\n"
       "colours and palettes, line types, memory pools, name tables, foreign\n"
       "number formats, text fields, an OS shell, and sessions with a helper\n"
       "process. The same input gives the same bits on every platform.\n\n")

# CPack has no variable for the field Multi-Arch before version 3.31.
set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME ${runtime_package})
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SECTION "libs\nMulti-Arch: same")
set(CPACK_DEBIAN_RUNTIME_DESCRIPTION
    "machinery under two-dimensional graphics applications (shared library)\n${description}\
This package has what programs need to run.")
foreach(file symbols shlibs triggers)
  list(APPEND CPACK_DEBIAN_RUNTIME_PACKAGE_CONTROL_EXTRA ${PROJECT_BINARY_DIR}/debian/${file})
endforeach()

set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME ${development_package})
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION "libdevel\nMulti-Arch: same")
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS
    "${runtime_package} (= ${PROJECT_VERSION}-${revision})")
set(CPACK_DEBIAN_DEVELOPMENT_DESCRIPTION
    "machinery under two-dimensional graphics applications (development files)\n${description}\
This package has what is needed to build programs: headers for C++ and for\n\
C, and the files by which CMake and pkg-config find them.")
include(CPack)

# ---- what Debian wants to find in the packages, beside what every installation has

set(written ${PROJECT_BINARY_DIR}/debian)
file(WRITE ${written}/control
     "Source: zelvan\n\nPackage: ${runtime_package}\nArchitecture: any\n")  # for Debian's tools
file(WRITE ${written}/shlibs
     "libzelvan ${PROJECT_VERSION_MAJOR} ${runtime_package} (>= ${PROJECT_VERSION})\n")
file(WRITE ${written}/triggers "activate-noawait ldconfig\n")

# The names that programs take from the library; for each of them they need this version or a later
# one.
set(symbols "libzelvan.so.${PROJECT_VERSION_MAJOR} ${runtime_package} #MINVER#\n"
            "* Build-Depends-Package: ${development_package}\n")
file(STRINGS ${PROJECT_SOURCE_DIR}/src/zelvan/exports.txt names REGEX "^[^#]")
foreach(name IN LISTS names)
  if(name MATCHES "[ :(]")  # in the form that people read
    list(APPEND symbols " (c++)\"${name}@Base\" ${PROJECT_VERSION}\n")
  else()
    list(APPEND symbols " ${name}@Base ${PROJECT_VERSION}\n")
  endif()
endforeach()
file(WRITE ${written}/exports.symbols ${symbols})

# In a paragraph of this form, lines begin with a blank, and one that is empty holds a dot.
file(READ ${PROJECT_SOURCE_DIR}/LICENSE licence)
string(REGEX MATCH "Copyright \\(c\\) ([^\n]+)\n\n(.*)" licence "${licence}")
set(holders "${CMAKE_MATCH_1}")
string(STRIP "${CMAKE_MATCH_2}" terms)
string(REPLACE "\n\n" "\n.\n" terms "${terms}")
string(REPLACE "\n" "\n " terms "${terms}")
file(WRITE ${written}/copyright "\
Format: https://www.debian.org/doc/packaging-manuals/copyright-format/1.0/
Upstream-Name: zelvan

Files: *
Copyright: ${holders}
License: Expat

License: Expat
 ${terms}
")

# The date is that of SOURCE_DATE_EPOCH.
string(TIMESTAMP date "%a, %d %b %Y %H:%M:%S +0000" UTC)
file(WRITE ${written}/changelog.Debian "\
zelvan (${PROJECT_VERSION}-${revision}) unstable; urgency=medium

  * Version ${PROJECT_VERSION}; changelog.gz beside this file says what is in it.

 -- ${CPACK_DEBIAN_PACKAGE_MAINTAINER}  ${date}
")
configure_file(${PROJECT_SOURCE_DIR}/CHANGELOG.md ${written}/changelog COPYONLY)
foreach(file changelog changelog.Debian)
  execute_process(COMMAND gzip -9nc ${written}/${file} OUTPUT_FILE ${written}/${file}.gz
                  COMMAND_ERROR_IS_FATAL ANY)
endforeach()
foreach(component Runtime Development)
  string(TOLOWER ${component} package)
  install(FILES ${written}/copyright ${written}/changelog.gz ${written}/changelog.Debian.gz
          DESTINATION ${CMAKE_INSTALL_DATAROOTDIR}/doc/${${package}_package} COMPONENT ${component})
endforeach()
