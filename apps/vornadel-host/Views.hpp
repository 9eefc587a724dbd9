// What the runner shows of the dialog's tree and of the work part: plain records read from the
// host (Snapshot.hpp) and printed by the Printer (Output.hpp). Text is GBK, as inside the host.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <vector>

#include "Driver.hpp"
#include "Script.hpp"

namespace runner {

// The tree columns 0..12 that every line of "show tree" in tsv prints.
constexpr int kTsvTreeColumns = 13;

struct TreeRow {
    int depth = 0;                            // 0 for top-level nodes, 1 for their children, ...
    std::map<int, std::string> texts;         // by column id
    std::optional<int> colour;                // foreground colour, when the node has one
    std::optional<unsigned int> bodyTag;      // the body in the node's data under "Data"
};

struct TreeView {
    std::vector<host::ColumnView> columns;    // in tree order
    std::vector<TreeRow> rows;                // in pre-order
};

// The rows of the tree that are selected and those that are expanded, each in pre-order.
struct TreeStateView {
    std::vector<RowAddress> selected;
    std::vector<RowAddress> expanded;
};

struct AttributeView {
    std::string title;
    std::string type;                         // string, integer, real, boolean, time, null, reference
    std::string value;                        // as text; a real in its shortest exact form
};

struct BodyView {
    unsigned int tag = 0;
    int layer = 0;
    int colour = 0;
    bool blanked = false;
    bool highlighted = false;
    std::vector<AttributeView> attributes;
};

struct LayerView {
    int layer = 0;
    std::string state;                        // work, visible, invisible (as part files say; selectable ones are not listed)
};

struct PartView {
    std::string leaf;
    std::vector<AttributeView> attributes;
    std::vector<LayerView> layers;            // the work layer and every layer that is not selectable
    std::vector<BodyView> bodies;             // in part order
};

}  // namespace runner
