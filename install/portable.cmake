# The installation folder of one user, which may lie anywhere: cv-Tools/ with the start file, and
# Tessel.hz/ below it with the programs, the manual, the examples, and all that the user makes.
set(program_folder cv-Tools/Tessel.hz)

install(TARGETS polefit polefit-cli pfit RUNTIME DESTINATION ${program_folder} COMPONENT portable)
install(FILES DOSstart.cvx DESTINATION cv-Tools COMPONENT portable)
install(FILES manual.rtf DESTINATION ${program_folder} COMPONENT portable)

# As they were shipped, so that a changed one can be put back.
install(FILES ${examples} DESTINATION ${program_folder}/Examples COMPONENT portable)

# An example that is there already may have been saved over by the user and is left alone.
install(CODE "
  set(user \"\$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}/${program_folder}/User\")
  file(MAKE_DIRECTORY \"\${user}\")
  file(GLOB examples \"${CMAKE_CURRENT_SOURCE_DIR}/User/Ex-*\")
  foreach(example IN LISTS examples)
    cmake_path(GET example FILENAME name)
    if(NOT EXISTS \"\${user}/\${name}\")
      file(COPY \"\${example}\" DESTINATION \"\${user}\")
    endif()
  endforeach()" COMPONENT portable)

# Its entry in the desktop's menu. The prefix, and with it the path of the program, may be chosen as
# late as at the installation.
install(FILES icons/polefit.svg DESTINATION share/icons/hicolor/scalable/apps COMPONENT menu)
install(FILES icons/polefit-256.png DESTINATION share/icons/hicolor/256x256/apps
        RENAME polefit.png COMPONENT menu)
install(CODE "
  get_filename_component(program \"\${CMAKE_INSTALL_PREFIX}/${program_folder}/polefit\" ABSOLUTE)
  set(program \"\\\"\${program}\\\"\")
  set(entry \"${CMAKE_CURRENT_BINARY_DIR}/polefit.desktop\")
  configure_file(\"${CMAKE_CURRENT_SOURCE_DIR}/desktop/polefit.desktop.in\" \"\${entry}\" @ONLY)
  file(INSTALL \"\${entry}\" DESTINATION \"\${CMAKE_INSTALL_PREFIX}/share/applications\")"
  COMPONENT menu)
