#ifndef NXOpen_BODYCOLLECTION_HXX_INCLUDED
#define NXOpen_BODYCOLLECTION_HXX_INCLUDED

#include <NXOpen/TaggedObject.hxx>
#include <NXOpen/TaggedObjectCollection.hxx>
#include <NXOpen/NXString.hxx>
#include <NXOpen/libnxopencpp_exports.hxx>

namespace NXOpen
{
    class Body;

    // The bodies of a part, in part order. Forward iteration only.
    class NXOPENCPPEXPORT BodyCollection : public NXOpen::TaggedObjectCollection
    {
    public:
        // As NX 8.5 declares it: the class itself is not exported; its operators are inline
        // around the two exported members, operator* and the private next().
        class iterator
        {
        public:
            typedef NXOpen::Body *value_type;
            iterator() : m_context(NULL), m_current(NULL_TAG)
            {
                for (int i = 0; i < 8; ++i)
                    m_state[i] = 0;
            }
            explicit iterator(NXOpen::BodyCollection *context) : m_context(context), m_current(NULL_TAG)
            {
                for (int i = 0; i < 8; ++i)
                    m_state[i] = 0;
            }
            iterator(const iterator &other) : m_context(NULL), m_current(NULL_TAG) { copy(other); }
            iterator &operator=(const iterator &other)
            {
                if (&other != this)
                    copy(other);
                return *this;
            }
            bool operator==(const iterator &other) const
            {
                return m_current == other.m_current && m_context == other.m_context;
            }
            bool operator!=(const iterator &other) const { return !operator==(other); }
            NXOPENCPPEXPORT value_type operator*();
            iterator &operator++()
            {
                next();
                return *this;
            }
            iterator operator++(int)
            {
                iterator tmp(*this);
                ++*this;
                return tmp;
            }

        private:
            void copy(const iterator &other)
            {
                m_context = other.m_context;
                m_current = other.m_current;
                for (int i = 0; i < 8; ++i)
                    m_state[i] = other.m_state[i];
            }
            NXOPENCPPEXPORT void next();
            NXOpen::BodyCollection *m_context;
            tag_t m_current;
            unsigned int m_state[8];
        };

        iterator begin();
        iterator end() { return iterator(this); }
        NXOpen::Body *FindObject(const NXString &journalIdentifier);
        NXOpen::Body *FindObject(const char *journalIdentifier);
        tag_t Tag() const;

    protected:
        BodyCollection();
        virtual ~BodyCollection();
    };
}

#endif
