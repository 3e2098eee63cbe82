# Run by CPack on the folders that become Debian packages: adds what every such package has, and puts
# files where Debian wants them, which is elsewhere than in a tarball.
set(documents ${CMAKE_CURRENT_LIST_DIR}/../docs/package)

# Makes TARGET of FILE, the same bytes whenever it does.
function(compress file target)
  execute_process(COMMAND gzip -9nc ${file} OUTPUT_FILE ${target} COMMAND_ERROR_IS_FATAL ANY)
endfunction()

set(program ${CPACK_TEMPORARY_DIRECTORY}/program/usr)
set(development ${CPACK_TEMPORARY_DIRECTORY}/development/usr)
file(COPY ${documents}/copyright DESTINATION ${development}/share/doc/libbrisel-dev)
file(GLOB document_folders ${CPACK_TEMPORARY_DIRECTORY}/*/usr/share/doc/*)
foreach(folder IN LISTS document_folders)
  compress(${documents}/debian_changelog ${folder}/changelog.gz)
  compress(${documents}/../../CHANGELOG.md ${folder}/NEWS.gz)
endforeach()

# The page of the command is also that of the program that it starts.
set(preview ${CPACK_TEMPORARY_DIRECTORY}/preview/usr)
if(EXISTS ${preview})
  file(MAKE_DIRECTORY ${preview}/share/man/man1)
  file(RENAME ${program}/share/man/man1/brisel-preview.1 ${preview}/share/man/man1/brisel-preview.1)
endif()

file(GLOB pages ${CPACK_TEMPORARY_DIRECTORY}/*/usr/share/man/man1/*.1)
foreach(page IN LISTS pages)
  compress(${page} ${page}.gz)
  file(REMOVE ${page})
endforeach()
file(RENAME ${program}/share/zsh/site-functions ${program}/share/zsh/vendor-completions)

# Presets and manual are the same on every architecture; the module finds them by a link beside it.
file(RENAME ${program}/lib/brisel/Corvane ${program}/share/brisel/Corvane)
file(CREATE_LINK ../../share/brisel/Corvane ${program}/lib/brisel/Corvane SYMBOLIC)
file(CREATE_LINK ../../brisel/Corvane/Documentation/corvanedoc.html
  ${program}/share/doc/brisel/manual.html SYMBOLIC)
