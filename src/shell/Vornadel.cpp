#include "shell/Vornadel.h"

#include <exception>

#include <NXOpen/BlockStyler_BlockDialog.hxx>
#include <NXOpen/Callback.hxx>
#include <NXOpen/Session.hxx>
#include <NXOpen/UI.hxx>

#include "shell/ErrorBox.h"

NXOpen::Session* Vornadel::theSession = NULL;
NXOpen::UI* Vornadel::theUI = NULL;

Vornadel::Vornadel()
    : dialogFileName(NULL), theDialog(NULL), group(NULL), string03(NULL), string02(NULL), string031(NULL),
      string033(NULL), string01(NULL), string032(NULL), string0(NULL), string034(NULL), string035(NULL),
      string036(NULL), string04(NULL), group4(NULL), group3(NULL), scrolledWindow(NULL), tree_control0(NULL),
      group2(NULL), button01(NULL), button0(NULL), button04(NULL), button03(NULL), button021(NULL), button02(NULL),
      group1(NULL), bodySelect0(NULL), nativeFolderBrowser0(NULL), modifyColour(0), initialParamsTaken(false),
      addToGroupMode(false), addToGroupNode(NULL)
{
    theSession = NXOpen::Session::GetSession();
    theUI = NXOpen::UI::GetUI();

    // NX searches its dialog folders for the bare file name.
    dialogFileName = "Vornadel.dlx";
    theDialog = theUI->CreateDialog(dialogFileName);
    theDialog->AddUpdateHandler(NXOpen::make_callback(this, &Vornadel::update_cb));
    theDialog->AddInitializeHandler(NXOpen::make_callback(this, &Vornadel::initialize_cb));
    theDialog->AddDialogShownHandler(NXOpen::make_callback(this, &Vornadel::dialogShown_cb));

    // The dialog is made before the configuration is read, on purpose: a configuration failure
    // throws from here and leaves that dialog undeleted and unshown (the DLL is unloaded right
    // after the run).
    ReadConfiguration();
}

Vornadel::~Vornadel()
{
    if (theDialog != NULL) {
        delete theDialog;
        theDialog = NULL;
    }
    // initialParams releases only its own storage; the records it points to belong to
    // stdPartStore, which deletes every snapshot when it is destroyed after this body.
}

int Vornadel::Show()
{
    try {
        theDialog->Show();
    } catch (std::exception& e) {
        ShowExceptionBox("Block Styler", e);
    }
    return 0;
}

NXOpen::BlockStyler::PropertyList* Vornadel::GetBlockProperties(const char* blockID)
{
    return theDialog->GetBlockProperties(blockID);
}
