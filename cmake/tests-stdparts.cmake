# Standard parts, the tree and the first display of the plug-in, run inside the host.
vornadel_test(stdparts_tests stdparts Vornadel bodyinfo nxhost)
