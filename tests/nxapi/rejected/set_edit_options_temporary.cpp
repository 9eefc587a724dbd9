// Tree::SetEditOptions takes the options by non-const reference in NX 8.5: a temporary vector
// does not bind to it.
#include <NXOpen/BlockStyler_Tree.hxx>

#include <vector>

std::vector<NXOpen::NXString> Options() { return std::vector<NXOpen::NXString>(1, NXOpen::NXString("A")); }

void Offer(NXOpen::BlockStyler::Tree *tree) {
#ifdef NXAPI_REJECTED
    tree->SetEditOptions(Options(), 0);
#else
    std::vector<NXOpen::NXString> options = Options();
    tree->SetEditOptions(options, 0);
#endif
}
