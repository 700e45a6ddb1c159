# The folders of src (and tools), each with the folders whose headers its files may include beside
# the folder's own. A folder comes after the folders that it may include, so there is no circle.
# docs/architecture.md draws the picture.
set(QUORVEL_CONTRACT "platform/values platform/runtime platform/files platform/windows platform/network")
set(QUORVEL_FOLDERS
  "native:"
  "native/text:"
  "native/posix: native"
  "native/headless: native"
  "native/qt/view: native/text"
  "native/qt/sound:"
  "native/qt: native native/text native/qt/view"
  "platform/values: native native/text"
  "platform/runtime: native platform/values"
  "platform/files: native platform/values platform/runtime"
  "platform/windows: native platform/values platform/runtime platform/files"
  "platform/network: native platform/values platform/runtime"
  "messaging: platform/values platform/runtime platform/network"
  "ui: ${QUORVEL_CONTRACT} messaging"
  "log: ${QUORVEL_CONTRACT} messaging ui"
  "help: ${QUORVEL_CONTRACT} ui"
  "key: ${QUORVEL_CONTRACT} messaging ui log"
  "app: ${QUORVEL_CONTRACT} messaging ui log help key"
  "../tools: platform/values platform/network messaging log"
  "../tools/check: native native/headless ${QUORVEL_CONTRACT} messaging key tools")
