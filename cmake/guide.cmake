# SPDX-License-Identifier: GPL-3.0-or-later
# corvane_guide(TARGET): compiles the user's guide into TARGET as ":/guide.md".
#
# The chapters of docs/guide are joined, in this order, into guide.md in the build tree. A chapter
# that is changed is joined again by the next build.
function(corvane_guide target)
  set(chapters channels lists traffic trend setup board report bench shortcuts)
  set(guide "# Corvane user's guide\n")
  foreach(chapter IN LISTS chapters)
    set(file ${PROJECT_SOURCE_DIR}/docs/guide/${chapter}.md)
    file(READ ${file} text)
    string(APPEND guide "\n${text}")
    set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${file})
  endforeach()
  set(folder ${PROJECT_BINARY_DIR}/guide)
  file(WRITE ${folder}/joined.md "${guide}")
  file(COPY_FILE ${folder}/joined.md ${folder}/guide.md ONLY_IF_DIFFERENT)
  qt_add_resources(${target} guide PREFIX / BASE ${folder} FILES ${folder}/guide.md)
endfunction()
