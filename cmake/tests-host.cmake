# Conformance tests of the host against NX 8.5: one executable for every file of tests/host/.
vornadel_test(host_tests host nxhost)
