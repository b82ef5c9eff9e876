// Replays a corpus through a fuzz target without libFuzzer: every file named, and every file of
// every directory named, is handed to the target once, in name order. Exits with 1 when there
// was nothing to replay, so that a lost corpus does not pass unnoticed.
#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <system_error>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* dados, std::size_t tamanho);

int main(int argc, char** argv) {
  std::vector<std::filesystem::path> arquivos;
  for (int i = 1; i < argc; ++i) {
    const std::filesystem::path caminho = argv[i];
    std::error_code erro;
    if (std::filesystem::is_directory(caminho, erro)) {
      std::vector<std::filesystem::path> daPasta;
      for (const auto& entrada : std::filesystem::directory_iterator(caminho, erro)) {
        if (entrada.is_regular_file(erro)) daPasta.push_back(entrada.path());
      }
      std::sort(daPasta.begin(), daPasta.end());
      arquivos.insert(arquivos.end(), daPasta.begin(), daPasta.end());
    } else if (std::filesystem::is_regular_file(caminho, erro)) {
      arquivos.push_back(caminho);
    } else {
      std::fprintf(stderr, "não encontrado: %s\n", argv[i]);
      return 1;
    }
  }
  for (const std::filesystem::path& arquivo : arquivos) {
    std::ifstream entrada(arquivo, std::ios::binary);
    const std::string bytes((std::istreambuf_iterator<char>(entrada)),
                            std::istreambuf_iterator<char>());
    LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
  }
  std::printf("%zu entradas reproduzidas\n", arquivos.size());
  return arquivos.empty() ? 1 : 0;
}
