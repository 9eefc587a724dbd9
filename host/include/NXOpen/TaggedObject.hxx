#ifndef NXOpen_TAGGEDOBJECT_HXX_INCLUDED
#define NXOpen_TAGGEDOBJECT_HXX_INCLUDED

#include <NXOpen/libnxopencpp_exports.hxx>

#ifndef TAG_T_DEFINED
#define TAG_T_DEFINED
typedef unsigned int tag_t;
typedef tag_t *tag_p_t;
#endif
#ifndef NULL_TAG
#define NULL_TAG ((tag_t)0)
#endif

namespace host { class Tags; }

namespace NXOpen
{
    // Root of every NX object that has a tag (parts, bodies, blocks, nodes, the session ...).
    class NXOPENCPPEXPORT TaggedObject
    {
    public:
        TaggedObject();
        // The object's tag, for user-function calls.
        tag_t Tag() const;
        // Old name of Tag().
        tag_t GetTag() const;
        virtual ~TaggedObject();
        virtual void initialize();

    private:
        friend class host::Tags;
        tag_t m_tag;
    };
}

#endif
