# Makes the release archive from the program directory: the program, its themes, sounds, start
# page, readme, icon and install script, with an empty favourites file. The home page file is
# left out: install.sh writes it with the folder the user unpacked to. Settings a developer's
# runs left behind (theme, colour, notes) stay out too.
set(stage ${OUT_DIR}/release-stage)
set(name glidepath-${VERSION}-linux-${MACHINE})
file(REMOVE_RECURSE ${stage})
file(MAKE_DIRECTORY ${stage}/Glidepath)
foreach(item glidepath install.sh glidepath.png readme.TXT Art Default Midnight Start)
  file(COPY ${PROGRAM_DIR}/${item} DESTINATION ${stage}/Glidepath USE_SOURCE_PERMISSIONS)
endforeach()
file(WRITE ${stage}/Glidepath/FavPlaces.INI "")
if(STRIP)
  execute_process(COMMAND ${STRIP} --strip-debug ${stage}/Glidepath/glidepath) # a user needs no debugger's tables
endif()
file(REMOVE ${OUT_DIR}/${name}.tar.gz)
execute_process(COMMAND ${CMAKE_COMMAND} -E tar czf ${OUT_DIR}/${name}.tar.gz Glidepath
                WORKING_DIRECTORY ${stage} RESULT_VARIABLE failed)
if(failed)
  message(FATAL_ERROR "release: could not make ${name}.tar.gz")
endif()
file(REMOVE_RECURSE ${stage})
message(STATUS "release: ${OUT_DIR}/${name}.tar.gz")
