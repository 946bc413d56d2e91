# The installation that users share, in two components: `console` (pfit, polefit-cli) and `window`.
#   cmake --install build/release --prefix /usr/local --component console
#   cmake --install build/release --prefix /usr/local --component window
# The programs lie together in lib/polefit, with links in bin; a mark beside them says that each
# user has folders of his own.

# shared_files(component folder [as name] file...)
function(shared_files component folder)
  cmake_parse_arguments(PARSE_ARGV 2 SHARED "" "AS" "")
  set(rename)
  if(SHARED_AS)
    set(rename RENAME ${SHARED_AS})
  endif()
  install(FILES ${SHARED_UNPARSED_ARGUMENTS} DESTINATION ${folder} ${rename}
          COMPONENT ${component} EXCLUDE_FROM_ALL)
endfunction()

function(shared_program component program)
  install(TARGETS ${program} RUNTIME DESTINATION lib/polefit COMPONENT ${component}
          EXCLUDE_FROM_ALL)
  set(link ${CMAKE_CURRENT_BINARY_DIR}/links/${program})
  file(MAKE_DIRECTORY ${CMAKE_CURRENT_BINARY_DIR}/links)
  file(CREATE_LINK ../lib/polefit/${program} ${link} SYMBOLIC)
  shared_files(${component} bin ${link})
endfunction()

# shared_packed(component folder file name): the file as name.gz.
function(shared_packed component folder file name)
  find_program(GZIP_PROGRAM gzip REQUIRED)
  set(packed ${CMAKE_CURRENT_BINARY_DIR}/packed/${component})
  file(MAKE_DIRECTORY ${packed})
  execute_process(COMMAND ${GZIP_PROGRAM} -9nc ${file} OUTPUT_FILE ${packed}/${name}.gz
                  COMMAND_ERROR_IS_FATAL ANY)
  set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${file})
  shared_files(${component} ${folder} ${packed}/${name}.gz)
endfunction()

shared_program(console pfit)
shared_program(console polefit-cli)
shared_program(window polefit)
shared_files(console lib/polefit package/for-all-users)

shared_files(window share/polefit DOSstart.cvx)
shared_files(window share/polefit/Tessel.hz manual.rtf)
shared_files(window share/polefit/Tessel.hz/Examples ${examples})

set(program polefit)
configure_file(desktop/polefit.desktop.in shared/polefit.desktop @ONLY)
configure_file(desktop/example.polefit.Polefit.metainfo.xml.in
               shared/example.polefit.Polefit.metainfo.xml @ONLY)
shared_files(window share/applications ${CMAKE_CURRENT_BINARY_DIR}/shared/polefit.desktop)
shared_files(window share/metainfo
             ${CMAKE_CURRENT_BINARY_DIR}/shared/example.polefit.Polefit.metainfo.xml)
shared_files(window share/mime/packages desktop/polefit.xml)
shared_files(window share/icons/hicolor/scalable/apps icons/polefit.svg)
foreach(size 16 22 24 32 48 64 128 256)
  shared_files(window share/icons/hicolor/${size}x${size}/apps AS polefit.png
               icons/polefit-${size}.png)
endforeach()

foreach(page pfit.1 polefit-cli.1 response-input-file.5)
  string(REGEX MATCH "[0-9]$" section ${page})
  shared_packed(console share/man/man${section} ${CMAKE_CURRENT_SOURCE_DIR}/man/${page} ${page})
endforeach()
shared_packed(window share/man/man1 ${CMAKE_CURRENT_SOURCE_DIR}/man/polefit.1 polefit.1)

set(completions share/bash-completion/completions)
shared_files(console ${completions} AS pfit completion/pfit.bash)
shared_files(console ${completions} AS polefit-cli completion/polefit-cli.bash)
shared_files(window ${completions} AS polefit completion/polefit.bash)

# What a package says of itself. In a copyright file " ." stands for an empty line.
file(READ ${PROJECT_SOURCE_DIR}/LICENSE licence)
string(REGEX REPLACE "^[^\n]*\n\n[^\n]*\n\n" "" licence "${licence}")
string(STRIP "${licence}" licence)
string(REPLACE "\n\n" "\n.\n" licence "${licence}")
string(REPLACE "\n" "\n " licence " ${licence}")
configure_file(package/copyright copyright @ONLY)
shared_files(archive . ${CMAKE_CURRENT_BINARY_DIR}/copyright)
foreach(package window:polefit console:polefit-cli)
  string(REPLACE ":" ";" package ${package})
  list(GET package 0 component)
  list(GET package 1 name)
  shared_files(${component} share/doc/${name} ${CMAKE_CURRENT_BINARY_DIR}/copyright)
  shared_packed(${component} share/doc/${name} ${CMAKE_CURRENT_SOURCE_DIR}/package/changelog
                changelog)
endforeach()
