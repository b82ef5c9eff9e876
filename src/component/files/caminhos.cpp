#include "component/files/caminhos.hpp"

#include <system_error>

namespace quorv::caminhos {

std::filesystem::path Caminho(std::string_view utf8) {
  return std::filesystem::u8path(utf8.begin(), utf8.end());
}

bool DiretorioExiste(std::string_view utf8) {
  if (utf8.empty()) return false;
  std::error_code erro;
  return std::filesystem::is_directory(Caminho(utf8), erro);
}

std::string Advertencias(std::string_view diretorio) {
#ifdef _WIN32
  constexpr char kSeparador = '\\';
#else
  constexpr char kSeparador = '/';
#endif
  std::string caminho(diretorio);
  caminho += kSeparador;
  caminho += kAdvertencias;
  return caminho;
}

bool Existe(std::string_view utf8) {
  std::error_code erro;
  return !utf8.empty() && std::filesystem::exists(Caminho(utf8), erro);
}

bool MesmoArquivo(std::string_view a, std::string_view b) {
  std::error_code erro;
  return std::filesystem::equivalent(Caminho(a), Caminho(b), erro);
}

void Apaga(std::string_view utf8) {
  const std::filesystem::path caminho = Caminho(utf8);
  std::error_code erro;
  // A directory that bears the file's name is not the run's to delete, even when it is empty.
  if (std::filesystem::is_directory(std::filesystem::symlink_status(caminho, erro))) return;
  std::filesystem::remove(caminho, erro);
}

}  // namespace quorv::caminhos
