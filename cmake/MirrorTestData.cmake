# Mirrors the data the suites read into DEST, keeping each folder's place under the source root, so
# that the self-check runs with nothing under the source tree written. Mirrored are every
# "tests/testfiles" folder (in any letter case, at any depth of a component) and the folders listed
# in DATA_DIRS (source-relative, separated by "|"). Files that left the source leave the mirror too.
#   cmake -DSOURCE=<root> -DDEST=<mirror> [-DDATA_DIRS=a|b] -P MirrorTestData.cmake
if(NOT SOURCE OR NOT DEST)
  message(FATAL_ERROR "MirrorTestData: SOURCE and DEST are required")
endif()

# Top-level folders of the components: hidden folders and build trees (a CMakeCache.txt, or the mirror
# itself) are left out, so that a build inside the checkout is never mirrored into itself.
file(GLOB top LIST_DIRECTORIES true RELATIVE ${SOURCE} ${SOURCE}/*)
set(roots)
foreach(entry IN LISTS top)
  if(IS_DIRECTORY ${SOURCE}/${entry} AND NOT entry MATCHES "^\\." AND NOT EXISTS ${SOURCE}/${entry}/CMakeCache.txt)
    file(REAL_PATH ${SOURCE}/${entry} real)
    file(REAL_PATH ${DEST} real_dest)
    cmake_path(IS_PREFIX real real_dest inside)
    if(NOT inside)
      list(APPEND roots ${entry})
    endif()
  endif()
endforeach()

set(folders)
foreach(root IN LISTS roots)
  file(GLOB_RECURSE dirs LIST_DIRECTORIES true RELATIVE ${SOURCE} ${SOURCE}/${root}/*)
  foreach(dir IN LISTS dirs)
    string(TOLOWER "${dir}" lower)
    if(IS_DIRECTORY ${SOURCE}/${dir} AND lower MATCHES "(^|/)tests/testfiles$")
      list(APPEND folders ${dir})
    endif()
  endforeach()
endforeach()
string(REPLACE "|" ";" extra "${DATA_DIRS}")
foreach(dir IN LISTS extra)
  if(IS_DIRECTORY ${SOURCE}/${dir})
    list(APPEND folders ${dir})
  endif()
endforeach()

# Every file wanted in the mirror, relative to the roots of both trees.
set(wanted)
foreach(dir IN LISTS folders)
  file(GLOB_RECURSE files RELATIVE ${SOURCE} ${SOURCE}/${dir}/*)
  list(APPEND wanted ${files})
endforeach()
list(REMOVE_DUPLICATES wanted)

foreach(file IN LISTS wanted)
  set(target ${DEST}/${file})
  if(NOT EXISTS ${target} OR ${SOURCE}/${file} IS_NEWER_THAN ${target})
    get_filename_component(parent ${target} DIRECTORY)
    file(MAKE_DIRECTORY ${parent})
    file(COPY_FILE ${SOURCE}/${file} ${target} ONLY_IF_DIFFERENT)
  endif()
endforeach()

# Whatever else the mirror holds came from an earlier source tree or a run: it goes.
if(IS_DIRECTORY ${DEST})
  file(GLOB_RECURSE present RELATIVE ${DEST} ${DEST}/*)
  foreach(file IN LISTS present)
    list(FIND wanted ${file} index)
    if(index EQUAL -1)
      file(REMOVE ${DEST}/${file})
    endif()
  endforeach()
endif()
# The folder the self-check starts in, beside the mirrored component folders.
file(MAKE_DIRECTORY ${DEST}/SelfCheck)
