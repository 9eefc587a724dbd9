# The NX install kit: `cmake --install <build> --prefix <folder> --component nxkit` lays out an NX
# custom directory (docs/install.md):
#   application/   Vornadel.dll, the two DLLs it imports, the dialog file Vornadel.dlx
#   startup/       vornadel.men, the menu with the button "标准件BOM" that runs Vornadel.dll
#   VDConfig/      a configuration root to start from (the bundled samples' root)
#   D/MYTOOL/      what belongs on drive D: (the pointer to the layer table)
# Only the Windows builds have it; the kit for NX comes from the build against the NX SDK.
install(TARGETS Vornadel readconfig bodyinfo RUNTIME DESTINATION application COMPONENT nxkit)
install(FILES ${VORNADEL_ROOT}/dialog/Vornadel.dlx DESTINATION application COMPONENT nxkit)
install(FILES ${VORNADEL_ROOT}/nx/startup/vornadel.men DESTINATION startup COMPONENT nxkit)
install(DIRECTORY ${VORNADEL_ROOT}/samples/config DESTINATION VDConfig COMPONENT nxkit)
install(DIRECTORY ${VORNADEL_ROOT}/samples/drive-d/MYTOOL DESTINATION D COMPONENT nxkit)
