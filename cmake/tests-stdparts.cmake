# Standard parts, the tree and the first display of the plug-in, run inside the host.
vornadel_test(stdparts_tests stdparts Vornadel bodyinfo nxhost)

# The same tests, and the bundled sample mould's transcripts, with the host's mass properties
# erring as NX's numerical integration may: identical bodies must group exactly as before.
add_test(NAME stdparts_tests_numerical_mass_props COMMAND stdparts_tests WORKING_DIRECTORY ${VORNADEL_ROOT})
get_test_property(stdparts_tests ENVIRONMENT stdparts_environment)
set_tests_properties(stdparts_tests_numerical_mass_props PROPERTIES ENVIRONMENT
  "${stdparts_environment};VORNADEL_HOST_MASS_PROPS=numerical")
# The runner is not built for Windows: there the transcripts do not run.
if(NOT WIN32)
  vornadel_transcripts(samples/scripts numerical_mass_props VORNADEL_HOST_MASS_PROPS=numerical)
endif()
