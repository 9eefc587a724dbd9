#ifndef VORNADEL_SHELL_VORNADEL_H
#define VORNADEL_SHELL_VORNADEL_H

#include <string>
#include <vector>

#include <NXOpen/NXString.hxx>
#include <NXOpen/BlockStyler_Tree.hxx>

#include "config/ConfigTables.h"
#include "shell/BaseBom.h"
#include "shell/BomHeadInfo.h"
#include "stdparts/StdPartRecords.h"
#include "stdparts/StdPartStore.h"

namespace NXOpen {
class Session;
class UI;
class Body;
namespace BlockStyler {
class BlockDialog;
class UIBlock;
class Group;
class StringBlock;
class ScrolledWindow;
class Button;
class BodyCollector;
class FolderSelection;
class PropertyList;
}
}
class BodyInfo;

// The standard-part BOM dialog: one object per run of the user function. It holds the dialog
// made from "Vornadel.dlx", its blocks, the configuration read at construction and the tree
// snapshot. Member functions are defined in the folder of the subsystem they belong to.
class Vornadel : public BaseBom {
public:
    static NXOpen::Session* theSession;
    static NXOpen::UI* theUI;

    // Creates the dialog, registers its handlers, then reads the whole configuration; throws
    // std::exception with the message of the first configuration step that fails.
    Vornadel();
    virtual ~Vornadel();

    // Shows the dialog modally; returns 0 when it is closed.
    int Show();
    NXOpen::BlockStyler::PropertyList* GetBlockProperties(const char* blockID);

    // Dialog handlers.
    int update_cb(NXOpen::BlockStyler::UIBlock* block);
    void initialize_cb();
    void dialogShown_cb();

    // Tree handlers.
    void OnExpandCallback(NXOpen::BlockStyler::Tree* tree, NXOpen::BlockStyler::Node* node);
    void OnPreSelectCallback(NXOpen::BlockStyler::Tree* tree, NXOpen::BlockStyler::Node* node, int columnID, bool selected);
    void OnSelectCallback(NXOpen::BlockStyler::Tree* tree, NXOpen::BlockStyler::Node* node, int columnID, bool selected);
    NXOpen::BlockStyler::Tree::BeginLabelEditState OnBeginLabelEditCallback(NXOpen::BlockStyler::Tree* tree, NXOpen::BlockStyler::Node* node, int columnID);
    NXOpen::BlockStyler::Tree::EndLabelEditState OnEndLabelEditCallback(NXOpen::BlockStyler::Tree* tree, NXOpen::BlockStyler::Node* node, int columnID, NXOpen::NXString editedText);
    NXOpen::BlockStyler::Tree::EditControlOption OnEditOptionSelectedCallback(NXOpen::BlockStyler::Tree* tree, NXOpen::BlockStyler::Node* node, int columnID, int selectedOptionID, NXOpen::NXString selectedOptionText, NXOpen::BlockStyler::Tree::ControlType type);
    NXOpen::BlockStyler::Tree::ControlType AskEditControlCallback(NXOpen::BlockStyler::Tree* tree, NXOpen::BlockStyler::Node* node, int columnID);
    void OnMenuCallback(NXOpen::BlockStyler::Tree* tree, NXOpen::BlockStyler::Node* node, int columnID);
    void OnMenuSelectionCallback(NXOpen::BlockStyler::Tree* tree, NXOpen::BlockStyler::Node* node, int menuItemID);

    // Configuration: remembers a value typed into a head block in its option list and table.
    void AddConfigFileValue(const std::string& configPath, const std::string& columnName, std::vector<std::string>& list, const std::string& value, NXOpen::BlockStyler::UIBlock* block);

    // Standard parts: records, matching, tree building and reading back.
    int GetStringValueIndex(std::vector<std::string>& list, const std::string& value);
    std::vector<StandardPartParam> GetStdPartParams(std::vector<NXOpen::Body*>& bodies, std::vector<std::string>& nameOrder);
    std::vector<BodyInfo*> GetSameBodies(BodyInfo* reference, std::vector<BodyInfo*>& candidates);
    bool IsCreateStdPartNode(BodyInfo* body, std::vector<BodyInfo*>& placed);
    void CreatStdPartNodes(bool flag, bool takeSnapshot);
    NXOpen::BlockStyler::Node* CreateStdPartNode(const std::string& sequenceText, StandardPartParam& record, NXOpen::BlockStyler::Node* parent, NXOpen::BlockStyler::Node* after);
    NXOpen::BlockStyler::Node* CreateStdPartNode(NXOpen::BlockStyler::Node* groupNode, NXOpen::Body* body);
    void CreateStdNodes(std::vector<NodeParam*>& records);
    NodeParam* GetNodeParam(NXOpen::BlockStyler::Node* node);
    std::vector<NodeParam*> GetNodeParams();

    // The string block of head field i (0..10), in the order of BomHeadInfo's fields.
    NXOpen::BlockStyler::StringBlock* HeadBlock(int i);
    // The eleven head blocks' texts, read as locale text.
    BomHeadInfo ReadHeadBlocks();

    // Saving attributes.
    void SaveAttributes();
    void SaveAttributesNoTitle();

    // Commands: export and display of standard-part bodies.
    void ExportBom();
    void ShowStdPartLayers();
    // The colour passes over the snapshot (each record's own body, then its children's bodies),
    // each followed by a rebuild from the work part that keeps the snapshot:
    // bodies of the modification colour blanked, all others unblanked (button021) ...
    void ShowOnlyUnmodifiedBodies();
    // ... or bodies of the modification colour unblanked, all others blanked (button02).
    void ShowOnlyModifiedBodies();

    // Members, in this order.
    const char* dialogFileName;                                 // "Vornadel.dlx"; not owned
    NXOpen::BlockStyler::BlockDialog* theDialog;                // owned
    NXOpen::BlockStyler::Group* group;                          // blocks: owned by the dialog
    NXOpen::BlockStyler::StringBlock* string03;
    NXOpen::BlockStyler::StringBlock* string02;
    NXOpen::BlockStyler::StringBlock* string031;
    NXOpen::BlockStyler::StringBlock* string033;
    NXOpen::BlockStyler::StringBlock* string01;
    NXOpen::BlockStyler::StringBlock* string032;
    NXOpen::BlockStyler::StringBlock* string0;
    NXOpen::BlockStyler::StringBlock* string034;
    NXOpen::BlockStyler::StringBlock* string035;
    NXOpen::BlockStyler::StringBlock* string036;
    NXOpen::BlockStyler::StringBlock* string04;
    NXOpen::BlockStyler::Group* group4;
    NXOpen::BlockStyler::Group* group3;
    NXOpen::BlockStyler::ScrolledWindow* scrolledWindow;
    NXOpen::BlockStyler::Tree* tree_control0;
    NXOpen::BlockStyler::Group* group2;
    NXOpen::BlockStyler::Button* button01;
    NXOpen::BlockStyler::Button* button0;
    NXOpen::BlockStyler::Button* button04;
    NXOpen::BlockStyler::Button* button03;
    NXOpen::BlockStyler::Button* button021;
    NXOpen::BlockStyler::Button* button02;
    NXOpen::BlockStyler::Group* group1;
    NXOpen::BlockStyler::BodyCollector* bodySelect0;
    NXOpen::BlockStyler::FolderSelection* nativeFolderBrowser0;
    BomHeadInfo headInfo;
    BomHeadConfig bomHeadConfig;
    StdPartConfig stdPartConfig;
    std::string smartDrawingConfigPath;
    std::string bomHeadConfigPath;
    std::string outputFolder;
    std::vector<int> stdPartLayers;
    int modifyColour;
    bool initialParamsTaken;
    std::vector<NodeParam*> initialParams;
    bool addToGroupMode;
    NXOpen::BlockStyler::Node* addToGroupNode;                   // not owned
    std::string userConfigPath;
    StdPartStore stdPartStore;  // owns the BodyInfo objects of a build and the tree snapshots

private:
    Vornadel(const Vornadel&);
    Vornadel& operator=(const Vornadel&);

    void ReadConfiguration();
};

#endif
