// Tags: every tagged object of the session by its tag, as user-function calls address them.
// Bodies keep the tags of their part file (1 .. 2^31-1); every other object gets a fresh tag
// counted up from 2^31, so the two never meet and a tag is never given twice in a process.
#include <cstdint>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include <NXOpen/TaggedObject.hxx>
#include <NXOpen/TaggedObjectCollection.hxx>
#include <NXOpen/TransientObject.hxx>

#include "HostSession.hpp"

namespace host {
namespace {

constexpr tag_t kFirstFreshTag = 0x80000000u;

// Tag -> object, open addressing with linear probing (NULL_TAG marks a free slot): every
// user-function call on an object looks its tag up here, so a look-up is one probe into one
// array in the common case, not a bucket and a node of a node-based map.
class TagTable {
public:
    TagTable() : slots_(size_t(1) << bits_) {}

    NXOpen::TaggedObject* Find(tag_t tag) const {
        if (tag == NULL_TAG) return nullptr;
        for (size_t i = Home(tag);; i = (i + 1) & Mask()) {
            if (slots_[i].first == tag) return slots_[i].second;
            if (slots_[i].first == NULL_TAG) return nullptr;
        }
    }

    void Set(tag_t tag, NXOpen::TaggedObject* object) {
        if (2 * (count_ + 1) > slots_.size()) Grow();
        size_t i = Home(tag);
        while (slots_[i].first != NULL_TAG && slots_[i].first != tag) i = (i + 1) & Mask();
        if (slots_[i].first == NULL_TAG) ++count_;
        slots_[i] = {tag, object};
    }

    // Removes the entry and shifts back the entries of its probe run, so that no look-up
    // stops early at the hole.
    void Erase(tag_t tag) {
        size_t hole = Home(tag);
        while (slots_[hole].first != tag) {
            if (slots_[hole].first == NULL_TAG) return;
            hole = (hole + 1) & Mask();
        }
        for (size_t i = (hole + 1) & Mask(); slots_[i].first != NULL_TAG; i = (i + 1) & Mask()) {
            // Entry i may move into the hole when its home is not within (hole, i].
            const size_t home = Home(slots_[i].first);
            const bool homeBetween = hole < i ? (home > hole && home <= i) : (home > hole || home <= i);
            if (homeBetween) continue;
            slots_[hole] = slots_[i];
            hole = i;
        }
        slots_[hole] = {NULL_TAG, nullptr};
        --count_;
    }

    bool Contains(tag_t tag) const { return Find(tag) != nullptr; }

private:
    size_t Mask() const { return slots_.size() - 1; }
    // Fibonacci hashing: tags counted up one by one spread over the table.
    size_t Home(tag_t tag) const {
        return static_cast<size_t>((static_cast<std::uint64_t>(tag) * 0x9E3779B97F4A7C15ull) >> (64 - bits_));
    }
    void Grow() {
        std::vector<std::pair<tag_t, NXOpen::TaggedObject*>> old(slots_.size() * 2);
        old.swap(slots_);
        ++bits_;
        count_ = 0;
        for (const auto& entry : old)
            if (entry.first != NULL_TAG) Set(entry.first, entry.second);
    }

    int bits_ = 4;
    std::vector<std::pair<tag_t, NXOpen::TaggedObject*>> slots_;  // 2^bits_ of them, at most half full
    size_t count_ = 0;
};

struct Registry {
    TagTable objects;
    tag_t next = kFirstFreshTag;
    // The object whose tag was asked last: user-function calls mostly name the object whose
    // Tag() the plug-in has just asked (UF_ATTR_read_value(body->Tag(), ...)), so its look-up
    // skips the table.
    tag_t askedTag = NULL_TAG;
    NXOpen::TaggedObject* askedObject = nullptr;
};

// Never destroyed: tagged objects of static storage (the session, the UI) release their tags
// during exit, after any registry of static storage would be gone.
Registry& TheRegistry() {
    static Registry* registry = new Registry;
    return *registry;
}

tag_t NextFreshTag() {
    Registry& r = TheRegistry();
    while (r.objects.Contains(r.next)) ++r.next;
    if (r.next == 0) throw std::logic_error("host: no fresh tags left");
    return r.next++;
}

}  // namespace

void Tags::Assign(NXOpen::TaggedObject* obj, tag_t tag) {
    if (tag == NULL_TAG) throw std::logic_error("host: NULL_TAG cannot name an object");
    Registry& r = TheRegistry();
    NXOpen::TaggedObject* found = r.objects.Find(tag);
    if (found != nullptr && found != obj)
        throw std::logic_error("host: tag " + std::to_string(tag) + " is already in use");
    Release(obj);
    r.objects.Set(tag, obj);
    obj->m_tag = tag;
}

tag_t Tags::AssignNew(NXOpen::TaggedObject* obj) {
    if (obj->m_tag != NULL_TAG) return obj->m_tag;
    tag_t tag = NextFreshTag();
    TheRegistry().objects.Set(tag, obj);
    obj->m_tag = tag;
    return tag;
}

void Tags::Release(NXOpen::TaggedObject* obj) {
    Registry& r = TheRegistry();
    if (obj->m_tag != NULL_TAG && r.objects.Find(obj->m_tag) == obj) r.objects.Erase(obj->m_tag);
    if (r.askedObject == obj) {
        r.askedTag = NULL_TAG;
        r.askedObject = nullptr;
    }
    obj->m_tag = NULL_TAG;
}

tag_t Tags::Reserve() { return NextFreshTag(); }

NXOpen::TaggedObject* Tags::Find(tag_t tag) {
    Registry& r = TheRegistry();
    if (tag == r.askedTag && tag != NULL_TAG) return r.askedObject;
    return r.objects.Find(tag);
}

tag_t Tags::Asked(const NXOpen::TaggedObject* obj) {
    Registry& r = TheRegistry();
    if (obj->m_tag != NULL_TAG) {  // registered under it: Assign and Release keep the two together
        r.askedTag = obj->m_tag;
        r.askedObject = const_cast<NXOpen::TaggedObject*>(obj);
    }
    return obj->m_tag;
}

}  // namespace host

namespace NXOpen {

// Every tagged object has a tag from the moment it exists, as in NX.
TaggedObject::TaggedObject() : m_tag(NULL_TAG) { host::Tags::AssignNew(this); }
tag_t TaggedObject::Tag() const { HOST_NX_CALL("TaggedObject::Tag"); return host::Tags::Asked(this); }
tag_t TaggedObject::GetTag() const { HOST_NX_CALL("TaggedObject::GetTag"); return host::Tags::Asked(this); }
TaggedObject::~TaggedObject() { host::Tags::Release(this); }
void TaggedObject::initialize() { HOST_NX_CALL("TaggedObject::initialize");}

TransientObject::TransientObject() : m_handle(nullptr) {}
TransientObject::TransientObject(void* ptr) : m_handle(ptr) {}
TransientObject::~TransientObject() = default;
void* TransientObject::GetHandle() { HOST_NX_CALL("TransientObject::GetHandle"); return m_handle; }

TaggedObjectCollection::TaggedObjectCollection() = default;
TaggedObjectCollection::~TaggedObjectCollection() = default;

}  // namespace NXOpen
