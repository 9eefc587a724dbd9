#ifndef NXOpen_TRANSIENTOBJECT_HXX_INCLUDED
#define NXOpen_TRANSIENTOBJECT_HXX_INCLUDED

#include <NXOpen/libnxopencpp_exports.hxx>

namespace NXOpen
{
    // Root of wrapper objects without a tag (dialogs, property lists, data containers, menus).
    // The caller that receives one owns it and deletes it.
    class NXOPENCPPEXPORT TransientObject
    {
    public:
        void *GetHandle();
        virtual ~TransientObject();

    protected:
        TransientObject();
        explicit TransientObject(void *ptr);

    private:
        TransientObject(const TransientObject &);
        TransientObject &operator=(const TransientObject &);
        void *m_handle;
    };
}

#endif
