// StringBlock::SetListItems takes the items by non-const reference in NX 8.5: a temporary vector
// does not bind to it under standard C++ (MSVC accepts it only as a language extension).
#include <NXOpen/BlockStyler_StringBlock.hxx>

#include <vector>

std::vector<NXOpen::NXString> Choices() { return std::vector<NXOpen::NXString>(1, NXOpen::NXString("A")); }

void Fill(NXOpen::BlockStyler::StringBlock *block) {
#ifdef NXAPI_REJECTED
    block->SetListItems(Choices());
#else
    std::vector<NXOpen::NXString> items = Choices();
    block->SetListItems(items);
#endif
}
