// Files for the tests: a fresh working directory per test, and reading and writing bytes.
#ifndef QUORVVALIDA_TESTS_SUPPORT_ARQUIVOS_HPP_
#define QUORVVALIDA_TESTS_SUPPORT_ARQUIVOS_HPP_

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace quorv::teste {

// A directory made for one test and removed with everything in it when the test ends.
class DiretorioTemporario {
 public:
  DiretorioTemporario();
  ~DiretorioTemporario();
  DiretorioTemporario(const DiretorioTemporario&) = delete;
  DiretorioTemporario& operator=(const DiretorioTemporario&) = delete;

  const std::filesystem::path& Caminho() const { return caminho_; }
  // The directory as the library takes it (UTF-8 text).
  std::string Texto() const { return caminho_.u8string(); }
  // A path inside the directory, as text.
  std::string Arquivo(std::string_view nome) const;
  // The warnings file of a run in this directory.
  std::string Advertencias() const { return Arquivo("ADVERTENCIAS.TXT"); }
  bool TemAdvertencias() const;

 private:
  std::filesystem::path caminho_;
};

// Writes the bytes to the file.
void GravaBytes(const std::string& caminho, std::string_view bytes);

// The lines joined as an input file: each line followed by the line end.
std::string JuntaLinhas(const std::vector<std::string>& linhas, std::string_view fim = "\r\n");

// The whole file as bytes; empty when it does not exist.
std::string LeBytes(const std::string& caminho);

}  // namespace quorv::teste

#endif  // QUORVVALIDA_TESTS_SUPPORT_ARQUIVOS_HPP_
