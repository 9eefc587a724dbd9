#ifndef NXOpen_UPDATE_HXX_INCLUDED
#define NXOpen_UPDATE_HXX_INCLUDED

#include <NXOpen/Session.hxx>
#include <NXOpen/TaggedObject.hxx>
#include <NXOpen/libnxopencpp_exports.hxx>

namespace NXOpen
{
    // The session's update manager; only its option enum is used.
    class NXOPENCPPEXPORT Update
    {
    public:
        enum Option
        {
            OptionNow,
            OptionLater
        };
        tag_t Tag() const;

    protected:
        Update();
        virtual ~Update();

    private:
        Update(const Update &);
        Update &operator=(const Update &);
    };
}

#endif
