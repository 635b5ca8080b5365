# What every target of the project compiles with.
add_library(zelqwarnings INTERFACE)
target_compile_options(zelqwarnings INTERFACE
  -Wall -Wextra -Wconversion -Wshadow
  $<$<BOOL:${ZELQ_WERROR}>:-Werror>)
# Debug builds check after each step what always has to hold.
target_compile_definitions(zelqwarnings INTERFACE $<$<CONFIG:Debug>:ZELQ_CHECK_INVARIANTS>)

# Third-party code is compiled with the sanitizers too (templates, inline functions), so they are
# set for the whole build and not for a target.
if(ZELQ_SANITIZE)
  add_compile_options(-fsanitize=${ZELQ_SANITIZE} -fno-omit-frame-pointer
    -fno-sanitize-recover=all)
  add_link_options(-fsanitize=${ZELQ_SANITIZE})
endif()

# zelq_sources(TARGET FILE...): adds sources and gives the target the project's include root.
function(zelq_sources target)
  target_sources(${target} PRIVATE ${ARGN})
  target_include_directories(${target} PUBLIC ${PROJECT_SOURCE_DIR}/src)
  target_link_libraries(${target} PRIVATE zelqwarnings)
endfunction()

# zelq_folders(TARGET FOLDER...): adds all sources of these folders, but for one named main.cpp where
# the target is a library.
function(zelq_folders target)
  get_target_property(type ${target} TYPE)
  foreach(folder IN LISTS ARGN)
    file(GLOB sources CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/${folder}/*.cpp)
    if(type STREQUAL STATIC_LIBRARY)
      list(FILTER sources EXCLUDE REGEX "/main\\.cpp$")
    endif()
    zelq_sources(${target} ${sources})
  endforeach()
endfunction()
