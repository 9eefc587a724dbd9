# The runner's tests: unit tests of its parts, end-to-end runs of vornadel-host on the test
# plug-in, and the transcripts (each script beside an .expected output, run through the runner).

# The test plug-in: a user-function library built exactly like the real plug-in (C++98, the NX
# headers and the platform interfaces only), to drive the host and the runner end to end.
add_library(vornadel-testplugin SHARED ${VORNADEL_ROOT}/tests/testplugin/TestPlugin.cpp)
vornadel_cxx98(vornadel-testplugin)
target_include_directories(vornadel-testplugin PRIVATE ${VORNADEL_NX_INCLUDE} ${VORNADEL_ROOT}/src)
target_link_libraries(vornadel-testplugin PRIVATE nxhost vornadel_platform)

vornadel_test(runner_tests runner vornadel-host-core)
target_compile_definitions(runner_tests PRIVATE VORNADEL_TEST_SOURCE_DIR="${VORNADEL_ROOT}")
add_dependencies(runner_tests vornadel-host vornadel-testplugin Vornadel)

# The transcript driver: runs one script through vornadel-host --format tsv and compares the
# output with the .expected file beside the script (docs/runner.md, "Transcripts").
add_executable(vornadel-transcript ${VORNADEL_ROOT}/tests/runner/transcript/Transcript.cpp)
vornadel_cxx17(vornadel-transcript)

# vornadel_transcripts(folder [variant NAME=VALUE]): a variant runs the same scripts against the
# same .expected files with one more environment variable; its tests are named ..._variant.
function(vornadel_transcripts folder)
  file(GLOB scripts CONFIGURE_DEPENDS ${VORNADEL_ROOT}/${folder}/*.txt)
  foreach(script ${scripts})
    get_filename_component(name ${script} NAME_WE)
    get_filename_component(dir ${script} DIRECTORY)
    if(NOT EXISTS ${dir}/${name}.expected)
      continue()
    endif()
    string(REPLACE "/" "_" prefix ${folder})
    set(run ${prefix}_${name})
    if(ARGC GREATER 2)
      set(run ${run}_${ARGV1})
    endif()
    set(test transcript_${run})
    add_test(NAME ${test}
      COMMAND vornadel-transcript --runner $<TARGET_FILE:vornadel-host> --source ${VORNADEL_ROOT}
              --bin ${CMAKE_BINARY_DIR}/bin --scratch ${CMAKE_BINARY_DIR}/transcripts/${run} ${script}
      WORKING_DIRECTORY ${VORNADEL_ROOT})
    if(ARGC GREATER 2)
      set_tests_properties(${test} PROPERTIES ENVIRONMENT "${ARGV2}")
    endif()
  endforeach()
endfunction()
vornadel_transcripts(samples/scripts)
vornadel_transcripts(tests/runner/scripts)

# The driver must notice a transcript that differs from its run (and say so: a run that could not
# be made does not count).
add_test(NAME transcript_mismatch_fails
  COMMAND vornadel-transcript --runner $<TARGET_FILE:vornadel-host> --source ${VORNADEL_ROOT}
          --bin ${CMAKE_BINARY_DIR}/bin --scratch ${CMAKE_BINARY_DIR}/transcripts/mismatch
          ${VORNADEL_ROOT}/tests/runner/transcript/mismatch.txt
  WORKING_DIRECTORY ${VORNADEL_ROOT})
set_tests_properties(transcript_mismatch_fails PROPERTIES PASS_REGULAR_EXPRESSION "the transcript differs")
