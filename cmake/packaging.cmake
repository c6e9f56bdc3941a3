# What makes the program at home on a desktop, installed below any prefix, and
# the Debian package of all that. Configuring needs nothing beyond the compiler's
# packages; what `cpack` needs stands in tools/packages.
set(app_id org.mavo.offline-survey-entry)
set(packaging_dir ${PROJECT_BINARY_DIR}/packaging)
foreach(file mavo-survey ${app_id}.metainfo.xml mavo-survey.1 mavo-data.1 mavo-surveys.1
    debian/changelog debian/copyright)
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

# install_icon(PLACE IMAGE...): the SVGs and PNGs of an icon; PLACE is the
# directory of the theme and the icon's name in it. A symbolic SVG gets the
# directory and the name that the theme wants for it.
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

# Only of the Debian package, and installed after all else: Debian wants its
# documents, and the manual pages, compressed as far as can be.
set(debian_only COMPONENT debian EXCLUDE_FROM_ALL)
install(FILES ${packaging_dir}/debian/changelog DESTINATION share/doc/mavo-survey
  RENAME changelog.Debian ${debian_only})
install(FILES ${packaging_dir}/debian/copyright DESTINATION share/doc/mavo-survey ${debian_only})
install(FILES packaging/debian/lintian-overrides DESTINATION share/lintian/overrides
  RENAME mavo-survey ${debian_only})
install(CODE [[
  execute_process(COMMAND gzip -9 --no-name --force
      $ENV{DESTDIR}${CMAKE_INSTALL_PREFIX}/share/man/man1/mavo-survey.1
      $ENV{DESTDIR}${CMAKE_INSTALL_PREFIX}/share/man/man1/mavo-data.1
      $ENV{DESTDIR}${CMAKE_INSTALL_PREFIX}/share/man/man1/mavo-surveys.1
      $ENV{DESTDIR}${CMAKE_INSTALL_PREFIX}/share/doc/mavo-survey/changelog.Debian
    COMMAND_ERROR_IS_FATAL ANY)
]] ${debian_only})

set(CPACK_GENERATOR DEB)
set(CPACK_INSTALL_CMAKE_PROJECTS
  "${PROJECT_BINARY_DIR};${PROJECT_NAME};ALL;/"
  "${PROJECT_BINARY_DIR};${PROJECT_NAME};debian;/")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS ${CMAKE_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS})
set(CPACK_STRIP_FILES ON)
set(CPACK_PACKAGE_NAME mavo-survey)
set(CPACK_PACKAGE_VENDOR "The MAVO-Survey developers")
set(CPACK_PACKAGE_CONTACT "${CPACK_PACKAGE_VENDOR} <${MAVO_SUPPORT_ADDRESS}>")
set(CPACK_PACKAGE_HOMEPAGE_URL https://${MAVO_WEB_HOST}/)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION science)
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "offline data entry for volunteer fish surveys")
set(CPACK_DEBIAN_PACKAGE_DESCRIPTION
"After a dive or a snorkel, volunteers enter who they are, where and when they
surveyed, the conditions, and the fish that they saw. No network is needed
until a survey is sent; until then it is a file in the user's documents.

Places, species and limits come with the program; newer ones are downloaded
when the user agrees.")
# The libraries are computed. Archives of data are unpacked by bzip2 and tar; the
# latter is essential, so it must not be named. The toolkit takes its icons from
# a theme; they are SVGs, which librsvg2-common lets it load.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_DEPENDS "adwaita-icon-theme, bzip2, librsvg2-common")
set(CPACK_DEBIAN_COMPRESSION_TYPE xz)
set(CPACK_THREADS 1)
include(CPack)
