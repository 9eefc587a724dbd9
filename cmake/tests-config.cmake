# The plug-in's shell and configuration, run inside the host.
vornadel_test(config_tests config Vornadel nxhost)
