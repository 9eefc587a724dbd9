#ifndef NXOpen_NXOBJECT_HXX_INCLUDED
#define NXOpen_NXOBJECT_HXX_INCLUDED

#include <vector>
#include <NXOpen/NXString.hxx>
#include <NXOpen/INXObject.hxx>
#include <NXOpen/TaggedObject.hxx>
#include <NXOpen/Update.hxx>
#include <NXOpen/libnxopencpp_exports.hxx>

namespace NXOpen
{
    class BasePart;
    class Unit;

    // An NX object with a name and user attributes. Attributes are typed; index -1 addresses an
    // attribute that is not an array. Lookups compare titles exactly.
    class NXOPENCPPEXPORT NXObject : public NXOpen::TaggedObject, public virtual NXOpen::INXObject
    {
    public:
        enum AttributeType
        {
            AttributeTypeInvalid,
            AttributeTypeNull,
            AttributeTypeBoolean,
            AttributeTypeInteger,
            AttributeTypeReal,
            AttributeTypeString,
            AttributeTypeTime,
            AttributeTypeReference,
            AttributeTypeAny = 100
        };

        enum DateAndTimeFormat
        {
            DateAndTimeFormatNumeric,
            DateAndTimeFormatTextual
        };

        struct AttributeInformation
        {
        public:
            NXOpen::NXObject::AttributeType Type;
            NXString Category;
            NXString Title;
            NXString TitleAlias;
            bool BooleanValue;
            int IntegerValue;
            double RealValue;
            NXString StringValue;
            NXString TimeValue;
            NXString ReferenceValue;
            bool Inherited;
            bool Locked;
            bool OwnedBySystem;
            bool Required;
            bool Unset;
            bool Array;
            int ArrayElementIndex;
            NXOpen::Unit *Unit;

            AttributeInformation()
                : Type(), Category(), Title(), TitleAlias(), BooleanValue(), IntegerValue(), RealValue(),
                  StringValue(), TimeValue(), ReferenceValue(), Inherited(), Locked(), OwnedBySystem(),
                  Required(), Unset(), Array(), ArrayElementIndex(), Unit()
            {
            }
            AttributeInformation(NXOpen::NXObject::AttributeType typeInitial, const NXString &categoryInitial,
                                 const NXString &titleInitial, const NXString &titleAliasInitial,
                                 bool booleanValueInitial, int integerValueInitial, double realValueInitial,
                                 const NXString &stringValueInitial, const NXString &timeValueInitial,
                                 const NXString &referenceValueInitial, bool inheritedInitial, bool lockedInitial,
                                 bool ownedBySystemInitial, bool requiredInitial, bool unsetInitial,
                                 bool arrayInitial, int arrayElementIndexInitial, NXOpen::Unit *unitInitial)
                : Type(typeInitial), Category(categoryInitial), Title(titleInitial), TitleAlias(titleAliasInitial),
                  BooleanValue(booleanValueInitial), IntegerValue(integerValueInitial), RealValue(realValueInitial),
                  StringValue(stringValueInitial), TimeValue(timeValueInitial), ReferenceValue(referenceValueInitial),
                  Inherited(inheritedInitial), Locked(lockedInitial), OwnedBySystem(ownedBySystemInitial),
                  Required(requiredInitial), Unset(unsetInitial), Array(arrayInitial),
                  ArrayElementIndex(arrayElementIndexInitial), Unit(unitInitial)
            {
            }
        };

        struct ComputationalTime
        {
        public:
            int Day;
            int Minute;
            ComputationalTime() : Day(), Minute() {}
            ComputationalTime(int dayInitial, int minuteInitial) : Day(dayInitial), Minute(minuteInitial) {}
        };

        void SetUserAttribute(const NXOpen::NXObject::AttributeInformation &info, NXOpen::Update::Option option);
        void SetUserAttribute(const NXString &title, int index, int value, NXOpen::Update::Option option);
        void SetUserAttribute(const char *title, int index, int value, NXOpen::Update::Option option);
        void SetUserAttribute(const NXString &title, int index, double value, NXOpen::Update::Option option);
        void SetUserAttribute(const char *title, int index, double value, NXOpen::Update::Option option);
        void SetUserAttribute(const NXString &title, int index, const NXString &value, NXOpen::Update::Option option);
        void SetUserAttribute(const char *title, int index, const char *value, NXOpen::Update::Option option);
        void SetUserAttribute(const NXString &title, int index, NXOpen::Update::Option option);
        void SetUserAttribute(const char *title, int index, NXOpen::Update::Option option);
        void SetTimeUserAttribute(const NXString &title, int index, const NXString &value, NXOpen::Update::Option option);
        void SetTimeUserAttribute(const char *title, int index, const char *value, NXOpen::Update::Option option);
        void SetBooleanUserAttribute(const NXString &title, int index, bool value, NXOpen::Update::Option option);
        void SetBooleanUserAttribute(const char *title, int index, bool value, NXOpen::Update::Option option);

        // Whether an attribute of this title, type and index exists (AttributeTypeAny: of any type).
        bool HasUserAttribute(const NXString &title, NXOpen::NXObject::AttributeType type, int index);
        bool HasUserAttribute(const char *title, NXOpen::NXObject::AttributeType type, int index);
        // The first match; throws NXException when there is none.
        NXOpen::NXObject::AttributeInformation GetUserAttribute(const NXString &title, NXOpen::NXObject::AttributeType type, int index);
        NXOpen::NXObject::AttributeInformation GetUserAttribute(const char *title, NXOpen::NXObject::AttributeType type, int index);
        // The value of a string / integer / real attribute; throws NXException when there is none.
        NXString GetStringUserAttribute(const NXString &title, int index);
        NXString GetStringUserAttribute(const char *title, int index);
        int GetIntegerUserAttribute(const NXString &title, int index);
        int GetIntegerUserAttribute(const char *title, int index);
        double GetRealUserAttribute(const NXString &title, int index);
        double GetRealUserAttribute(const char *title, int index);
        NXString GetUserAttributeAsString(const NXString &title, NXOpen::NXObject::AttributeType type, int index);
        NXString GetUserAttributeAsString(const char *title, NXOpen::NXObject::AttributeType type, int index);
        std::vector<NXOpen::NXObject::AttributeInformation> GetUserAttributes();
        // Deletes the first match (type first, then title); nothing happens when there is none.
        void DeleteUserAttribute(NXOpen::NXObject::AttributeType type, const NXString &title, bool deleteEntireArray, NXOpen::Update::Option option);
        void DeleteUserAttribute(NXOpen::NXObject::AttributeType type, const char *title, bool deleteEntireArray, NXOpen::Update::Option option);
        void DeleteUserAttributes(NXOpen::NXObject::AttributeType type, NXOpen::Update::Option option);

        virtual NXString Name();
        virtual void SetName(const NXString &name);
        void SetName(const char *name);
        virtual NXString JournalIdentifier();
        virtual bool IsOccurrence();
        virtual NXOpen::BasePart *OwningPart();

    protected:
        NXObject();
        virtual ~NXObject();
    };
}

#endif
