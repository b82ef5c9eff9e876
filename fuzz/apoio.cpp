#include "apoio.hpp"

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <system_error>

#ifdef _WIN32
#include <process.h>
#define QUORV_PID _getpid()
#else
#include <unistd.h>
#define QUORV_PID getpid()
#endif

namespace quorv::fuzz {
namespace {

// Removes the directory when the process ends normally.
class DiretorioDoProcesso {
 public:
  DiretorioDoProcesso()
      : caminho_(std::filesystem::temp_directory_path() /
                 ("quorvvalida-fuzz-" + std::to_string(QUORV_PID))) {
    std::filesystem::create_directories(caminho_);
    texto_ = caminho_.u8string();
  }
  ~DiretorioDoProcesso() {
    std::error_code erro;
    std::filesystem::remove_all(caminho_, erro);
  }
  DiretorioDoProcesso(const DiretorioDoProcesso&) = delete;
  DiretorioDoProcesso& operator=(const DiretorioDoProcesso&) = delete;

  const std::string& Texto() const { return texto_; }

 private:
  std::filesystem::path caminho_;
  std::string texto_;
};

}  // namespace

const std::string& Diretorio() {
  static const DiretorioDoProcesso diretorio;
  return diretorio.Texto();
}

std::string Caminho(std::string_view nome) {
  return Diretorio() + "/" + std::string(nome);
}

void Grava(const std::string& caminho, std::string_view bytes) {
  std::ofstream saida(std::filesystem::u8path(caminho), std::ios::binary | std::ios::trunc);
  saida.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  if (!saida) Quebrou("não foi possível gravar a entrada");
}

std::string Le(const std::string& caminho) {
  std::ifstream entrada(std::filesystem::u8path(caminho), std::ios::binary);
  return std::string(std::istreambuf_iterator<char>(entrada), std::istreambuf_iterator<char>());
}

bool Existe(const std::string& caminho) {
  std::error_code erro;
  return std::filesystem::exists(std::filesystem::u8path(caminho), erro);
}

void Quebrou(const char* promessa) {
  std::fprintf(stderr, "promessa quebrada: %s\n", promessa);
  std::fflush(stderr);
  std::abort();
}

}  // namespace quorv::fuzz
