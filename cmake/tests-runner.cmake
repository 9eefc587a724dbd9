# The runner's tests: unit tests of its parts, end-to-end runs of vornadel-host on the test
# plug-in, and the transcripts (each script beside an .expected output, run through the runner).

# The test plug-in: a user-function library built exactly like the real plug-in (C++98, the NX
# headers and the platform interfaces only), to drive the host and the runner end to end.
add_library(vornadel-testplugin SHARED ${VORNADEL_ROOT}/tests/testplugin/TestPlugin.cpp)
vornadel_cxx98(vornadel-testplugin)
target_include_directories(vornadel-testplugin PRIVATE ${VORNADEL_NX_INCLUDE} ${VORNADEL_ROOT}/src)
target_link_libraries(vornadel-testplugin PRIVATE nxhost vornadel_platform)

if(WIN32)
  # The runner's own tests start it with fork/exec and drive it at a pseudo-terminal (the
  # interactive session): POSIX only, so not run here. On Windows the runner is tested through
  # its transcripts and through what it does differently there: a plug-in that does not load is
  # reported with Windows' reason, --drive is refused, and the arguments (the wide command line)
  # reach the plug-in as the UTF-8 they are.
  add_test(NAME runner_tests COMMAND ${CMAKE_COMMAND} -E echo "runner_tests: POSIX only (fork, pseudo-terminals)")
  set_tests_properties(runner_tests PROPERTIES DISABLED TRUE)
  add_test(NAME runner_win_missing_plugin COMMAND vornadel-host --plugin ${CMAKE_BINARY_DIR}/bin/missing.dll -e close)
  set_tests_properties(runner_win_missing_plugin PROPERTIES
    PASS_REGULAR_EXPRESSION "cannot load the plug-in [^\n]*missing\\.dll: [^\n]+ \\(Windows error 126\\)")
  add_test(NAME runner_win_no_drive_table COMMAND vornadel-host --drive D=${CMAKE_BINARY_DIR} -e close)
  set_tests_properties(runner_win_no_drive_table PROPERTIES
    PASS_REGULAR_EXPRESSION "--drive maps nothing on Windows: the plug-in uses the machine's own drives\nusage:")
  add_test(NAME runner_win_utf8_arguments
    COMMAND vornadel-host --plugin $<TARGET_FILE:vornadel-testplugin> --format tsv -e "set string03 中文 Φ4×200"
            -e "show blocks")
  set_tests_properties(runner_win_utf8_arguments PROPERTIES
    PASS_REGULAR_EXPRESSION "\nstring03\tStringBlock\t订单编号\t中文 Φ4×200\t\n")
else()
  vornadel_test(runner_tests runner vornadel-host-core)
  target_compile_definitions(runner_tests PRIVATE VORNADEL_TEST_SOURCE_DIR="${VORNADEL_ROOT}")
  add_dependencies(runner_tests vornadel-host vornadel-testplugin Vornadel moldgen)
endif()

# The transcript driver: runs one script through vornadel-host --format tsv and compares the
# output with the .expected file beside the script (docs/runner.md, "Transcripts").
# On Windows it is a Windows program too, run under Wine, and it runs vornadel-host.exe.
add_executable(vornadel-transcript ${VORNADEL_ROOT}/tests/runner/transcript/Transcript.cpp)
vornadel_cxx17(vornadel-transcript)
add_dependencies(vornadel-transcript vornadel-host vornadel-testplugin)

# vornadel_transcript_test(test scratch script): one run of the driver.
function(vornadel_transcript_test test scratch script)
  add_test(NAME ${test}
    COMMAND vornadel-transcript --runner $<TARGET_FILE:vornadel-host> --source ${VORNADEL_ROOT}
            --bin ${CMAKE_BINARY_DIR}/bin --testplugin $<TARGET_FILE:vornadel-testplugin>
            --scratch ${CMAKE_BINARY_DIR}/transcripts/${scratch} ${script}
    WORKING_DIRECTORY ${VORNADEL_ROOT})
endfunction()

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
    vornadel_transcript_test(${test} ${run} ${script})
    if(ARGC GREATER 2)
      set_tests_properties(${test} PROPERTIES ENVIRONMENT "${ARGV2}")
    endif()
  endforeach()
endfunction()
vornadel_transcripts(samples/scripts)
vornadel_transcripts(tests/runner/scripts)

# The driver must notice a transcript that differs from its run (and say so: a run that could not
# be made does not count).
vornadel_transcript_test(transcript_mismatch_fails mismatch ${VORNADEL_ROOT}/tests/runner/transcript/mismatch.txt)
set_tests_properties(transcript_mismatch_fails PROPERTIES PASS_REGULAR_EXPRESSION "the transcript differs")
