// Node::Expand takes Node::ExpandOption: the number 0 does not convert to it.
#include <NXOpen/BlockStyler_Node.hxx>

void Collapse(NXOpen::BlockStyler::Node *node) {
#ifdef NXAPI_REJECTED
    node->Expand(0);
#else
    node->Expand(NXOpen::BlockStyler::Node::ExpandOptionCollapse);
#endif
}
