#ifndef NXOpen_SELECTION_HXX_INCLUDED
#define NXOpen_SELECTION_HXX_INCLUDED

#include <vector>
#include <NXOpen/NXString.hxx>
#include <NXOpen/Callback.hxx>
#include <NXOpen/TaggedObject.hxx>
#include <NXOpen/NXDeprecation.hxx>
#include <NXOpen/libnxopenuicpp_exports.hxx>

namespace NXOpen
{
    class NXObject;

    // NX's interactive object selection.
    class NXOPENUICPPEXPORT Selection
    {
    public:
        enum SelectionScope
        {
            SelectionScopeUseDefault,
            SelectionScopeWorkPart,
            SelectionScopeAnyInAssembly = 3,
            SelectionScopeWorkPartAndOccurrence
        };

        enum SelectionAction
        {
            SelectionActionEnableAll,
            SelectionActionEnableSpecific,
            SelectionActionDisableSpecific,
            SelectionActionClearAndEnableSpecific,
            SelectionActionAllAndDisableSpecific
        };

        enum SelectionType
        {
            SelectionTypeAll,
            SelectionTypeFeatures,
            SelectionTypeCurves,
            SelectionTypeFaces,
            SelectionTypeEdges,
            SelectionTypeCurvesAndEdges
        };

        enum Response
        {
            ResponseBack = 1,
            ResponseCancel,
            ResponseOk,
            ResponseObjectSelectedByName,
            ResponseObjectSelected
        };

        // One entry of a selection mask: object type, subtype and solid kind.
        struct MaskTriple
        {
        public:
            int Type;
            int Subtype;
            int SolidBodySubtype;
            MaskTriple() : Type(), Subtype(), SolidBodySubtype() {}
            MaskTriple(int typeInitial, int subtypeInitial, int solidBodySubtypeInitial)
                : Type(typeInitial), Subtype(subtypeInitial), SolidBodySubtype(solidBodySubtypeInitial) {}
        };

        // Modal multi-selection restricted by a mask; fills objectArray.
        NX_DEPRECATED("Deprecated in NX8.0.0.  Use Selection::SelectTaggedObjects instead.")
        NXOpen::Selection::Response SelectObjects(const NXString &message, const NXString &title, NXOpen::Selection::SelectionScope scope, NXOpen::Selection::SelectionAction action, bool includeFeatures, bool keepHighlighted, const std::vector<NXOpen::Selection::MaskTriple> &maskArray, std::vector<NXOpen::NXObject *> &objectArray);
        NXOpen::Selection::Response SelectObjects(const char *message, const char *title, NXOpen::Selection::SelectionScope scope, NXOpen::Selection::SelectionAction action, bool includeFeatures, bool keepHighlighted, const std::vector<NXOpen::Selection::MaskTriple> &maskArray, std::vector<NXOpen::NXObject *> &objectArray);
        NX_DEPRECATED("Deprecated in NX8.0.0.  Use Selection::SelectTaggedObjects instead.")
        NXOpen::Selection::Response SelectObjects(const NXString &message, const NXString &title, NXOpen::Selection::SelectionScope scope, bool includeFeatures, bool keepHighlighted, std::vector<NXOpen::NXObject *> &objectArray);
        NXOpen::Selection::Response SelectObjects(const char *message, const char *title, NXOpen::Selection::SelectionScope scope, bool includeFeatures, bool keepHighlighted, std::vector<NXOpen::NXObject *> &objectArray);
        NX_DEPRECATED("Deprecated in NX8.0.0.  Use Selection::SelectTaggedObjects instead.")
        NXOpen::Selection::Response SelectObjects(const NXString &message, const NXString &title, NXOpen::Selection::SelectionScope scope, bool keepHighlighted, const std::vector<NXOpen::Selection::SelectionType> &typeArray, std::vector<NXOpen::NXObject *> &objectArray);
        NXOpen::Selection::Response SelectObjects(const char *message, const char *title, NXOpen::Selection::SelectionScope scope, bool keepHighlighted, const std::vector<NXOpen::Selection::SelectionType> &typeArray, std::vector<NXOpen::NXObject *> &objectArray);
        NXOpen::Selection::Response SelectTaggedObjects(const NXString &message, const NXString &title, NXOpen::Selection::SelectionScope scope, NXOpen::Selection::SelectionAction action, bool includeFeatures, bool keepHighlighted, const std::vector<NXOpen::Selection::MaskTriple> &maskArray, std::vector<NXOpen::TaggedObject *> &objectArray);
        NXOpen::Selection::Response SelectTaggedObjects(const char *message, const char *title, NXOpen::Selection::SelectionScope scope, NXOpen::Selection::SelectionAction action, bool includeFeatures, bool keepHighlighted, const std::vector<NXOpen::Selection::MaskTriple> &maskArray, std::vector<NXOpen::TaggedObject *> &objectArray);
        tag_t Tag() const;

    protected:
        Selection();
        virtual ~Selection();

    private:
        Selection(const Selection &);
        Selection &operator=(const Selection &);
    };
}

#endif
