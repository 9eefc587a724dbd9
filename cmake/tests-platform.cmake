# The operating-system part of the platform layer and the table reader.
vornadel_test(platform_tests platform vornadel_platform)
vornadel_test(readconfig_tests readconfig readconfig vornadel_platform)
