// Tags: every tagged object of the session by its tag, as user-function calls address them.
// Bodies keep the tags of their part file (1 .. 2^31-1); every other object gets a fresh tag
// counted up from 2^31, so the two never meet and a tag is never given twice in a process.
#include <stdexcept>
#include <string>
#include <unordered_map>

#include <NXOpen/TaggedObject.hxx>
#include <NXOpen/TaggedObjectCollection.hxx>
#include <NXOpen/TransientObject.hxx>

#include "HostSession.hpp"

namespace host {
namespace {

constexpr tag_t kFirstFreshTag = 0x80000000u;

struct Registry {
    std::unordered_map<tag_t, NXOpen::TaggedObject*> objects;
    tag_t next = kFirstFreshTag;
};

// Never destroyed: tagged objects of static storage (the session, the UI) release their tags
// during exit, after any registry of static storage would be gone.
Registry& TheRegistry() {
    static Registry* registry = new Registry;
    return *registry;
}

tag_t NextFreshTag() {
    Registry& r = TheRegistry();
    while (r.objects.count(r.next) != 0) ++r.next;
    if (r.next == 0) throw std::logic_error("host: no fresh tags left");
    return r.next++;
}

}  // namespace

void Tags::Assign(NXOpen::TaggedObject* obj, tag_t tag) {
    if (tag == NULL_TAG) throw std::logic_error("host: NULL_TAG cannot name an object");
    Registry& r = TheRegistry();
    auto found = r.objects.find(tag);
    if (found != r.objects.end() && found->second != obj)
        throw std::logic_error("host: tag " + std::to_string(tag) + " is already in use");
    Release(obj);
    r.objects[tag] = obj;
    obj->m_tag = tag;
}

tag_t Tags::AssignNew(NXOpen::TaggedObject* obj) {
    if (obj->m_tag != NULL_TAG) return obj->m_tag;
    tag_t tag = NextFreshTag();
    TheRegistry().objects[tag] = obj;
    obj->m_tag = tag;
    return tag;
}

void Tags::Release(NXOpen::TaggedObject* obj) {
    Registry& r = TheRegistry();
    auto found = r.objects.find(obj->m_tag);
    if (found != r.objects.end() && found->second == obj) r.objects.erase(found);
    obj->m_tag = NULL_TAG;
}

tag_t Tags::Reserve() { return NextFreshTag(); }

NXOpen::TaggedObject* Tags::Find(tag_t tag) {
    Registry& r = TheRegistry();
    auto found = r.objects.find(tag);
    return found == r.objects.end() ? nullptr : found->second;
}

}  // namespace host

namespace NXOpen {

// Every tagged object has a tag from the moment it exists, as in NX.
TaggedObject::TaggedObject() : m_tag(NULL_TAG) { host::Tags::AssignNew(this); }
tag_t TaggedObject::Tag() const { HOST_NX_CALL("TaggedObject::Tag"); return m_tag; }
tag_t TaggedObject::GetTag() const { HOST_NX_CALL("TaggedObject::GetTag"); return m_tag; }
TaggedObject::~TaggedObject() { host::Tags::Release(this); }
void TaggedObject::initialize() { HOST_NX_CALL("TaggedObject::initialize");}

TransientObject::TransientObject() : m_handle(nullptr) {}
TransientObject::TransientObject(void* ptr) : m_handle(ptr) {}
TransientObject::~TransientObject() = default;
void* TransientObject::GetHandle() { HOST_NX_CALL("TransientObject::GetHandle"); return m_handle; }

TaggedObjectCollection::TaggedObjectCollection() = default;
TaggedObjectCollection::~TaggedObjectCollection() = default;

}  // namespace NXOpen
