#ifndef DOZEWELL_SETUP_EMPTY_KEY_H_
#define DOZEWELL_SETUP_EMPTY_KEY_H_

namespace dozewell::setup {

// Deletes the product's key and the vendor's around it, each only if nothing is in it.
void DeleteProductKeysIfEmpty();

}  // namespace dozewell::setup

#endif  // DOZEWELL_SETUP_EMPTY_KEY_H_
