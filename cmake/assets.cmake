# SPDX-License-Identifier: GPL-3.0-or-later
# What lies beside the program: copied there at every build, file by file, so that only what changed is touched.

# kivandra_beside(<folder beside the program> <source folder> <patterns>...)
function(kivandra_beside place from)
  list(TRANSFORM ARGN PREPEND "${from}/")
  file(GLOB_RECURSE files CONFIGURE_DEPENDS RELATIVE ${from} ${ARGN})
  foreach(file IN LISTS files)
    set(copy ${CMAKE_RUNTIME_OUTPUT_DIRECTORY}/${place}/${file})
    add_custom_command(OUTPUT ${copy} DEPENDS ${from}/${file}
                       COMMAND ${CMAKE_COMMAND} -E copy ${from}/${file} ${copy} VERBATIM)
    list(APPEND copies ${copy})
  endforeach()
  set_property(GLOBAL APPEND PROPERTY KIVANDRA_BESIDE ${copies})
endfunction()

set(assets ${PROJECT_SOURCE_DIR}/assets)
kivandra_beside(forms ${assets}/forms *.ui)
kivandra_beside(css ${assets}/css *.css)
kivandra_beside(icons ${assets}/icons *.svg)
kivandra_beside(mascot ${assets}/mascot *.svg)
kivandra_beside(pictures ${assets}/pictures *)
kivandra_beside(KVDSkins ${assets}/skins *.skn)
kivandra_beside(pages ${assets}/pages *)
kivandra_beside(help ${assets}/help *)
kivandra_beside(site ${PROJECT_SOURCE_DIR}/site *)
kivandra_beside(. ${assets}/sounds *.wav)
foreach(file winaqua.skn smile.gif smilestop.jpg)
  kivandra_beside(. ${assets} ${file})
endforeach()

get_property(copies GLOBAL PROPERTY KIVANDRA_BESIDE)
add_custom_target(kivandra_assets ALL DEPENDS ${copies})
