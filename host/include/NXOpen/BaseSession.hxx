#ifndef NXOpen_BASESESSION_HXX_INCLUDED
#define NXOpen_BASESESSION_HXX_INCLUDED

#include <NXOpen/TaggedObject.hxx>
#include <NXOpen/libnxopencpp_exports.hxx>

namespace NXOpen
{
    class NXOPENCPPEXPORT BaseSession : public NXOpen::TaggedObject
    {
    protected:
        BaseSession();
        virtual ~BaseSession();
    };
}

#endif
