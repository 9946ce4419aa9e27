# SPDX-License-Identifier: GPL-3.0-or-later
# Where the program goes when it is installed. Its program folder holds the executables and leads on to the data, which
# are the same on every machine; what is beside the program is listed in assets.cmake.
set(program_folder lib/kivandra)
install(TARGETS kivandra kivandra-open RUNTIME DESTINATION ${program_folder})

# kivandra_link(<target> <link>): a relative symbolic link, both below the prefix.
function(kivandra_link target link)
  install(CODE "
    set(link \"\$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}/${link}\")
    get_filename_component(folder \"\${link}\" DIRECTORY)
    file(MAKE_DIRECTORY \"\${folder}\")
    file(REMOVE \"\${link}\")
    file(RELATIVE_PATH way \"\${folder}\" \"\$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}/${target}\")
    file(CREATE_LINK \"\${way}\" \"\${link}\" SYMBOLIC)")
endfunction()

get_property(beside GLOBAL PROPERTY KIVANDRA_BESIDE_NAMES)
list(REMOVE_DUPLICATES beside)
foreach(name IN LISTS beside)
  kivandra_link(share/kivandra/${name} ${program_folder}/${name})
endforeach()
kivandra_link(${program_folder}/kivandra bin/kivandra)
kivandra_link(${program_folder}/kivandra-open bin/kivandra-open)

set(KIVANDRA_OPEN kivandra-open)
configure_file(packaging/org.kivandra.Kivandra.desktop.in ${CMAKE_BINARY_DIR}/generated/org.kivandra.Kivandra.desktop @ONLY)
install(FILES ${CMAKE_BINARY_DIR}/generated/org.kivandra.Kivandra.desktop DESTINATION share/applications)
install(FILES packaging/org.kivandra.kivandra.metainfo.xml DESTINATION share/metainfo)
install(FILES assets/icons/hicolor/scalable/apps/kivandra.svg DESTINATION share/icons/hicolor/scalable/apps)
install(FILES packaging/kivandra.1 packaging/kivandra-open.1 DESTINATION share/man/man1)
