# Fills in where the programs lie, into the very place where the files are installed: a file in the build folder would
# belong to whoever installs. Needs SOURCE, BINDIR, DATADIR; the folders may be absolute.

cmake_path(ABSOLUTE_PATH BINDIR BASE_DIRECTORY "${CMAKE_INSTALL_PREFIX}")
cmake_path(ABSOLUTE_PATH DATADIR BASE_DIRECTORY "${CMAKE_INSTALL_PREFIX}")

# The path between the quotation marks of an entry's command, by the rule of filledEntry() in src/command.
set(quoted "${BINDIR}")
string(REPLACE [[\]] [[\\\\]] quoted "${quoted}")
foreach(special [["]] [[`]] [[$]])
    string(REPLACE "${special}" "\\\\${special}" quoted "${quoted}")
endforeach()

function(install_entry name folder folder_of_programs)
    set(ORBITA "${folder_of_programs}/orbita")
    set(ORBITA_TOOLKIT "${folder_of_programs}/orbita-toolkit")
    set(entry "${DATADIR}/${folder}/${name}")
    message(STATUS "Installing: $ENV{DESTDIR}${entry}")
    configure_file("${SOURCE}/${name}.in" "$ENV{DESTDIR}${entry}" @ONLY)
    list(APPEND CMAKE_INSTALL_MANIFEST_FILES "${entry}")
    set(CMAKE_INSTALL_MANIFEST_FILES "${CMAKE_INSTALL_MANIFEST_FILES}" PARENT_SCOPE)
endfunction()

if(quoted MATCHES "%")
    message(WARNING "Desktop entries cannot name programs in ${folder_of_programs}: a folder's name has a \"%\".")
endif()
foreach(program org.orbita.Orbita org.orbita.Toolkit)
    install_entry(${program}.desktop applications "${quoted}")
    install_entry(${program}.service dbus-1/services "${quoted}")
endforeach()
