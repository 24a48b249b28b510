// What is done with symbolic links.
#ifndef FI_RUN_INPUT_LINK_USE_H_
#define FI_RUN_INPUT_LINK_USE_H_

namespace fi::app {

enum class LinkUse {
  kArguments,  // links that were named are followed, links met in directories are not
  kAll,
  kNone,
};

}  // namespace fi::app

#endif  // FI_RUN_INPUT_LINK_USE_H_
