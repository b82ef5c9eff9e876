// FileUtility over any path text. Promises: the extension and the name with extension end the
// path, the path with its device starts it. FileExists looks only inside the process's own
// directory.
#include <cstdint>
#include <string>

#include "apoio.hpp"
#include "quorvvalida/file_utility.hpp"

namespace {

bool Comeca(const std::string& texto, const std::string& parte) {
  return texto.compare(0, parte.size(), parte) == 0;
}

bool Termina(const std::string& texto, const std::string& parte) {
  return parte.size() <= texto.size() &&
         texto.compare(texto.size() - parte.size(), parte.size(), parte) == 0;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* dados, std::size_t tamanho) {
  using quorv::fuzz::Quebrou;
  const std::string caminho(quorv::fuzz::Bytes(dados, tamanho));
  const quorv::FileUtility utilidade;
  static_cast<void>(utilidade.GetDrive(caminho));
  static_cast<void>(utilidade.GetFileName(caminho));
  static_cast<void>(utilidade.GetPath(caminho));
  if (!Termina(caminho, utilidade.GetFileExtension(caminho))) Quebrou("extensão fora do fim");
  if (!Termina(caminho, utilidade.GetFileName(caminho, true))) Quebrou("nome fora do fim");
  if (!Comeca(caminho, utilidade.GetPath(caminho, true))) Quebrou("pasta fora do começo");
  // No separator of folders, so that the listing stays in the process's directory.
  if (caminho.find('/') == std::string::npos && caminho.find('\\') == std::string::npos) {
    static_cast<void>(utilidade.FileExists(quorv::fuzz::Caminho(caminho)));
  }
  return 0;
}
