# A bill of materials in SPDX 2.3 for each program: what it is made of, in the versions that this
# build found, under which licences.

# zelq_component(NAME VERSION LICENSE HOW PROGRAM...): HOW is STATIC_LINK where the code becomes part
# of the program (libraries of headers) and DYNAMIC_LINK where the system has it.
set(third_party ${PROJECT_SOURCE_DIR}/docs/third-party.md)
file(READ ${third_party} third_party_text)
function(zelq_component name version license how)
  string(REGEX REPLACE "[+.]" "[\\0]" row "\n\\| ${name} \\|[^\n]*\\| ${license} \\|")
  if(NOT third_party_text MATCHES "${row}")
    message(FATAL_ERROR "${third_party} does not list ${name} under ${license}")
  endif()
  string(MAKE_C_IDENTIFIER ${name} id)
  string(REPLACE _ - id SPDXRef-${id})
  foreach(program IN LISTS ARGN)
    set_property(GLOBAL APPEND_STRING PROPERTY packages_${program} ",
    {
      \"SPDXID\": \"${id}\",
      \"name\": \"${name}\",
      \"versionInfo\": \"${version}\",
      \"downloadLocation\": \"NOASSERTION\",
      \"filesAnalyzed\": false,
      \"licenseConcluded\": \"${license}\",
      \"licenseDeclared\": \"${license}\",
      \"copyrightText\": \"NOASSERTION\"
    }")
    set_property(GLOBAL APPEND_STRING PROPERTY relationships_${program} ",
    {
      \"spdxElementId\": \"SPDXRef-Program\",
      \"relationshipType\": \"${how}\",
      \"relatedSpdxElement\": \"${id}\"
    }")
  endforeach()
endfunction()

set(all raslog)
if(ZELQ_GUI)
  list(APPEND all ras-log-browser)
  get_directory_property(qt DIRECTORY ${PROJECT_SOURCE_DIR}/src DEFINITION Qt6_VERSION)
  zelq_component(Qt ${qt} LGPL-3.0-only DYNAMIC_LINK ras-log-browser)
endif()
# zelq_header_version(VARIABLE HEADER REGEX): the version in the lines that match.
function(zelq_header_version variable header regex)
  file(STRINGS ${header} lines REGEX ${regex})
  string(REGEX MATCHALL " [0-9]+" numbers "${lines}")
  list(JOIN numbers "" numbers)
  string(STRIP "${numbers}" numbers)
  string(REPLACE " " . version "${numbers}")
  set(${variable} "${version}" PARENT_SCOPE)
endfunction()
zelq_header_version(xxhash ${XXHASH_INCLUDE_FOLDER}/xxhash.h
  "define +XXH_VERSION_(MAJOR|MINOR|REL)")
zelq_header_version(rapidjson ${RAPIDJSON_INCLUDE_FOLDER}/rapidjson/rapidjson.h
  "define +RAPIDJSON_(MAJOR|MINOR|PATCH)_VERSION")
# RE2 tells no version but that of its shared library.
file(REAL_PATH ${RE2_LIBRARY} re2)
string(REGEX REPLACE ".*\\.so\\." "" re2 ${re2})
zelq_component(Boost ${Boost_VERSION} BSL-1.0 STATIC_LINK ${all})
zelq_component(CLI11 ${CLI11_VERSION} BSD-3-Clause STATIC_LINK raslog)
zelq_component(RapidJSON ${rapidjson} MIT STATIC_LINK raslog)
zelq_component(RE2 ${re2} BSD-3-Clause DYNAMIC_LINK ${all})
zelq_component(robin-map ${tsl-robin-map_VERSION} MIT STATIC_LINK ${all})
zelq_component(xxHash ${xxhash} BSD-2-Clause STATIC_LINK ${all})
file(REAL_PATH ${RE2_LIBRARY} re2)  # which alone tells its version
string(REGEX MATCH "[0-9][0-9.]*$" re2 "${re2}")
zelq_component(RE2 "${re2}" BSD-3-Clause DYNAMIC_LINK ${all})
zelq_component(libstdc++ ${CMAKE_CXX_COMPILER_VERSION}
  "GPL-3.0-or-later WITH GCC-exception-3.1" DYNAMIC_LINK ${all})

set(created ${RELEASE_DATE}T00:00:00Z)
foreach(program IN LISTS all)
  get_property(packages GLOBAL PROPERTY packages_${program})
  get_property(relationships GLOBAL PROPERTY relationships_${program})
  string(UUID uuid NAMESPACE 6ba7b811-9dad-11d1-80b4-00c04fd430c8 TYPE SHA1
    NAME "${program} ${PROJECT_VERSION} ${created} ${packages}")
  set(bill ${CMAKE_CURRENT_BINARY_DIR}/${program}.spdx.json)
  configure_file(bill.spdx.json.in ${bill} @ONLY)
  install(FILES ${bill} DESTINATION ${doc_dir}/${program} COMPONENT ${program})
endforeach()
