// The blocks that a GIF file consists of behind its screen.
#include "imaginglibrary/codecs/gif/gifblocks.h"

namespace imaginglibrary {

bool PassOverGifBlocks(ByteReader& reader) {
    for (;;) {
        const int length = reader.ReadByte();
        if (length <= 0) {
            return length == 0;
        }
        reader.Seek(reader.Position() + static_cast<unsigned>(length));
    }
}

} // namespace imaginglibrary
