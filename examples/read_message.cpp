// Prints the number of rows of a message file: read_message < FILE. Links the target zelformats and nothing else.
#include <iostream>
#include <iterator>
#include <vector>

#include "module/message/format/message_loader.h"

int main() {
    const std::vector<std::uint8_t> bytes{std::istreambuf_iterator<char>(std::cin), {}};
    zel::message::LoadedMessage message;
    LoadMessage(bytes, message);
    if (message.rows) std::cout << message.header->RowCount() << " rows\n";
}
