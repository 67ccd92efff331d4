#include "contextmgr/ContextRegistry.hpp"

namespace contextmgr {

KvrID ContextRegistry::getKvrID() {
    return KvrID();
}

}  // namespace contextmgr
