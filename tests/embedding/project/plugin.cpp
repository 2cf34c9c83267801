#include <VexaBase/event/KyEventReactor.h>
#include <VexaBase/string/KyUtf8.h>

extern "C" __attribute__((visibility("default"))) void Announce(const char* pszName) {
    KyPostEvent(KyFromUtf8(pszName).c_str(), nullptr, 0);
}
