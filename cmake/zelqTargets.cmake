# What every target of the project compiles with.
add_library(zelqwarnings INTERFACE)
target_compile_options(zelqwarnings INTERFACE
  -Wall -Wextra -Wconversion -Wshadow
  $<$<BOOL:${ZELQ_WERROR}>:-Werror>)
# Debug builds check after each step what always has to hold.
target_compile_definitions(zelqwarnings INTERFACE $<$<CONFIG:Debug>:ZELQ_CHECK_INVARIANTS>)

# Third-party code is compiled with the sanitizers too (templates, inline functions), so they are
# set for the whole build and not for a target. The same goes for what makes faults hard to exploit,
# which the sanitizers do not need.
include(CheckPIESupported)
check_pie_supported()
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
if(ZELQ_SANITIZE)
  add_compile_options(-fsanitize=${ZELQ_SANITIZE} -fno-omit-frame-pointer
    $<$<CXX_COMPILER_ID:Clang>:-fsanitize-ignorelist=${PROJECT_SOURCE_DIR}/cmake/sanitizers.txt>
    -fno-sanitize-recover=all)
  add_link_options(-fsanitize=${ZELQ_SANITIZE})
else()
  # Functions of a static library cannot be replaced, so they may be inlined.
  add_compile_options(-fstack-protector-strong -fstack-clash-protection
    -fno-semantic-interposition)
  add_link_options(-Wl,-z,relro,-z,now)
  string(TOUPPER "CMAKE_CXX_FLAGS_${CMAKE_BUILD_TYPE}" flags)
  if("${CMAKE_CXX_FLAGS} ${${flags}}" MATCHES "-O[1-3s]")
    set(ZELQ_HARDENED ON)
    add_compile_options(-U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=2)  # which needs optimisation
  endif()
endif()

# zelq_precompile(TARGET HEADER...): compiles headers that most sources of a target use only once. Not
# in the plain builds, which so find out what a source forgets to include.
function(zelq_precompile target)
  if(ZELQ_SANITIZE)
    target_precompile_headers(${target} PRIVATE ${ARGN})
  endif()
endfunction()

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
