# Run by cpack after the components are staged: what a Debian package has and a plain installation has not.
set(packages_of_runtime ${CPACK_ZUCMTR_LIBRARY_PACKAGE})
set(packages_of_development libzucmtrconverter-dev)
set(packages_of_program zucmtr)
set(packages_of_python python3-zucmtr)

# run(COMMAND ARG...): stops cpack when it fails.
function(run)
  execute_process(COMMAND ${ARGN} COMMAND_ERROR_IS_FATAL ANY)
endfunction()

foreach(component ${CPACK_COMPONENTS_ALL})
  set(usr ${CPACK_TEMPORARY_DIRECTORY}/${component}/usr)
  set(doc ${usr}/share/doc/${packages_of_${component}})
  file(COPY ${CPACK_ZUCMTR_DEBIAN_DIR}/copyright ${CPACK_ZUCMTR_DEBIAN_DIR}/changelog DESTINATION ${doc}
       FILE_PERMISSIONS OWNER_READ OWNER_WRITE GROUP_READ WORLD_READ)
  file(RENAME ${doc}/changelog ${doc}/changelog.Debian)
  run(gzip -9nf ${doc}/changelog.Debian)
  file(COPY ${CPACK_ZUCMTR_DEBIAN_DIR}/overrides/${packages_of_${component}} DESTINATION ${usr}/share/lintian/overrides
       FILE_PERMISSIONS OWNER_READ OWNER_WRITE GROUP_READ WORLD_READ)
endforeach()

# The loader finds the library where it is, and Debian has its own place for completions of zsh.
set(program ${CPACK_TEMPORARY_DIRECTORY}/program/usr)
file(RPATH_REMOVE FILE ${program}/bin/zucmtr)
file(RENAME ${program}/share/zsh/site-functions ${program}/share/zsh/vendor-completions)

# A module of Debian's is for all its versions of Python 3.
file(GLOB modules ${CPACK_TEMPORARY_DIRECTORY}/python/usr/lib/python3.*)
if(modules)
  file(RENAME ${modules} ${CPACK_TEMPORARY_DIRECTORY}/python/usr/lib/python3)
  file(GLOB extension ${CPACK_TEMPORARY_DIRECTORY}/python/usr/lib/python3/dist-packages/zucmtr/_core.*.so)
  file(RPATH_REMOVE FILE ${extension})
endif()

# Whoever builds the packages may have a umask that keeps others out.
foreach(component ${CPACK_COMPONENTS_ALL})
  run(find ${CPACK_TEMPORARY_DIRECTORY}/${component}/usr -type d -exec chmod 755 {} +)
endforeach()

# The library's list of symbols is checked against what it exports, and its versions filled in.
set(library ${CPACK_TEMPORARY_DIRECTORY}/runtime)
file(GLOB_RECURSE shared_object LIST_DIRECTORIES FALSE ${library}/usr/*.so.?.?.?)
file(MAKE_DIRECTORY ${CPACK_ZUCMTR_CONTROL_DIR})
run(dpkg-gensymbols -c4 -q -p${CPACK_ZUCMTR_LIBRARY_PACKAGE} -v${CPACK_PACKAGE_VERSION} -e${shared_object}
    -I${CPACK_ZUCMTR_DEBIAN_DIR}/symbols -O${CPACK_ZUCMTR_CONTROL_DIR}/symbols)
file(CHMOD ${CPACK_ZUCMTR_CONTROL_DIR}/symbols PERMISSIONS OWNER_READ OWNER_WRITE GROUP_READ WORLD_READ)
string(REGEX MATCH "[0-9]+$" soversion ${CPACK_ZUCMTR_LIBRARY_PACKAGE})
file(WRITE ${CPACK_ZUCMTR_CONTROL_DIR}/shlibs
     "libZuCmtrConverter ${soversion} ${CPACK_ZUCMTR_LIBRARY_PACKAGE} (>= ${CPACK_PACKAGE_VERSION})\n")
