# In-place editing of the tree and the grouping menu, run inside the host.
vornadel_test(editing_tests editing Vornadel bodyinfo nxhost)
