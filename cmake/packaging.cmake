# Installs the files for desktops below any prefix. packaging/debian describes the Debian
# package.
set(app_id org.mavo.offline-survey-entry)
set(packaging_dir ${PROJECT_BINARY_DIR}/packaging)
foreach(file mavo-survey ${app_id}.metainfo.xml mavo-survey.1 mavo-data.1 mavo-surveys.1)
  configure_file(packaging/${file}.in ${packaging_dir}/${file} @ONLY)
endforeach()

set(CMAKE_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE
  GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
install(PROGRAMS ${packaging_dir}/mavo-survey DESTINATION bin)
install(FILES packaging/${app_id}.desktop packaging/${app_id}.viewer.desktop
  DESTINATION share/applications)
install(FILES docs/mavo-survey.rng DESTINATION share/mavo-survey)
install(FILES ${packaging_dir}/${app_id}.metainfo.xml DESTINATION share/metainfo)
install(FILES packaging/${app_id}.mime.xml DESTINATION share/mime/packages
  RENAME ${app_id}.xml)
install(FILES ${packaging_dir}/mavo-survey.1 ${packaging_dir}/mavo-data.1
  ${packaging_dir}/mavo-surveys.1 DESTINATION share/man/man1)
install(FILES packaging/bash-completion/mavo-data packaging/bash-completion/mavo-surveys
  DESTINATION share/bash-completion/completions)

# The user guide, and the documents to which it links.
install(FILES docs/user-guide.md docs/survey-format.md docs/mavo-survey.rng docs/data-files.md
  DESTINATION share/doc/mavo-survey)
install(DIRECTORY docs/screenshots DESTINATION share/doc/mavo-survey)

# install_icon(PLACE IMAGE...): installs the SVGs and PNGs of an icon. PLACE is the directory of
# the theme and the icon's name in it. A symbolic SVG gets the directory and the name that the
# theme requires.
function(install_icon place)
  cmake_path(GET place PARENT_PATH context)
  cmake_path(GET place FILENAME name)
  foreach(image ${ARGN})
    string(REGEX MATCH "-([0-9]+)\\.png$" size ${image})
    if(size)
      set(size ${CMAKE_MATCH_1}x${CMAKE_MATCH_1})
      set(extension .png)
    elseif(image MATCHES "-symbolic\\.svg$")
      set(size symbolic)
      set(extension -symbolic.svg)
    else()
      set(size scalable)
      set(extension .svg)
    endif()
    install(FILES ${image} DESTINATION share/icons/hicolor/${size}/${context}
      RENAME ${name}${extension})
  endforeach()
endfunction()
file(GLOB logos CONFIGURE_DEPENDS resources/MAVO-logo*.??g packaging/icons/MAVO-logo*.??g)
file(GLOB documents CONFIGURE_DEPENDS packaging/icons/MAVO-document*.??g)
install_icon(apps/${app_id} ${logos})
install_icon(mimetypes/application-vnd.mavo.survey+xml ${documents})
