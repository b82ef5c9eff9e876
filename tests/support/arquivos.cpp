#include "arquivos.hpp"

#include <atomic>
#include <chrono>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <system_error>

#include <gtest/gtest.h>

namespace quorv::teste {
namespace {

std::string NomeDoTeste() {
  const auto* info = ::testing::UnitTest::GetInstance()->current_test_info();
  if (info == nullptr) return "fora";
  std::string nome = std::string(info->test_suite_name()) + "-" + info->name();
  for (char& c : nome) {
    if (c == '/') c = '_';
  }
  return nome;
}

}  // namespace

DiretorioTemporario::DiretorioTemporario() {
  static std::atomic<unsigned> sequencia{0};
  const auto marca = std::chrono::steady_clock::now().time_since_epoch().count();
  caminho_ = std::filesystem::temp_directory_path() / "quorvvalida-testes" /
             (NomeDoTeste() + "-" + std::to_string(marca) + "-" + std::to_string(sequencia++));
  std::filesystem::create_directories(caminho_);
}

DiretorioTemporario::~DiretorioTemporario() {
  std::error_code erro;
  std::filesystem::permissions(caminho_, std::filesystem::perms::owner_all,
                               std::filesystem::perm_options::add, erro);
  std::filesystem::remove_all(caminho_, erro);
}

std::string DiretorioTemporario::Arquivo(std::string_view nome) const {
  return (caminho_ / std::filesystem::u8path(nome)).u8string();
}

bool DiretorioTemporario::TemAdvertencias() const {
  return std::filesystem::exists(std::filesystem::u8path(Advertencias()));
}

void GravaBytes(const std::string& caminho, std::string_view bytes) {
  std::ofstream saida(std::filesystem::u8path(caminho), std::ios::binary | std::ios::trunc);
  saida.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  if (!saida) throw std::runtime_error("não foi possível gravar " + caminho);
}

std::string JuntaLinhas(const std::vector<std::string>& linhas, std::string_view fim) {
  std::string bytes;
  for (const std::string& linha : linhas) {
    bytes += linha;
    bytes += fim;
  }
  return bytes;
}

std::string LeBytes(const std::string& caminho) {
  std::ifstream entrada(std::filesystem::u8path(caminho), std::ios::binary);
  return std::string(std::istreambuf_iterator<char>(entrada), std::istreambuf_iterator<char>());
}

}  // namespace quorv::teste
