#include "key/key_file.h"

#include "platform/files/text_stream.h"

namespace quorvel {

Ref<FolderItem> FindKeyFile() { return GetFolderItem(kKeyFileName, 0); }

KeyFile ReadKeyFile(const FolderItem& file) {
  KeyFile lines;
  const auto stream = file.OpenAsTextFile();
  if (!file.Exists()) return lines;
  if (!stream->EOF_()) lines.marker = stream->ReadLine(Nil);
  if (!stream->EOF_()) lines.key = stream->ReadLine(Nil);
  return lines;
}

}  // namespace quorvel
