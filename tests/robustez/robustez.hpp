// What the robustness tests share: a picture of a file taken before a run, to show that the run
// only read it; bytes above 127; and whether this machine can make a write fail.
#ifndef QUORVVALIDA_TESTS_ROBUSTEZ_ROBUSTEZ_HPP_
#define QUORVVALIDA_TESTS_ROBUSTEZ_ROBUSTEZ_HPP_

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <ostream>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace quorv::teste {

// A file as it stands: whether it exists, its bytes (the first kLimite of a big file), its size
// and the time of its last change.
struct Retrato {
  static constexpr std::size_t kLimite = 1 << 20;

  bool existe = false;
  std::string bytes;
  std::uintmax_t tamanho = 0;
  std::filesystem::file_time_type alterado;

  bool operator==(const Retrato& outro) const {
    return existe == outro.existe && bytes == outro.bytes && tamanho == outro.tamanho &&
           alterado == outro.alterado;
  }
};

Retrato Fotografa(const std::string& caminho);

inline void PrintTo(const Retrato& retrato, std::ostream* saida) {
  *saida << (retrato.existe ? "arquivo de " : "ausente, ") << retrato.tamanho
         << " bytes, alterado em " << retrato.alterado.time_since_epoch().count();
}

// Input files of a test, each pictured when it is registered; Confere compares them with how they
// stand now.
class Entradas {
 public:
  // Pictures the file (already written) and returns its path.
  const std::string& Registra(const std::string& caminho);
  // Writes the bytes to the file, then pictures it.
  const std::string& Grava(const std::string& caminho, std::string_view bytes);
  void Confere() const;

 private:
  std::vector<std::pair<std::string, Retrato>> arquivos_;
};

// n bytes between 128 and 255, running through all of them from 128 + inicio.
std::string BytesAltos(std::size_t n, unsigned inicio = 0);

// True when creating a file in the directory fails, as it should in a directory without write
// permission; false when the process writes there anyway (a superuser does).
bool EscritaRecusada(const std::filesystem::path& diretorio);

// The device on which every write fails for lack of space; empty where there is none.
std::string DispositivoCheio();

// The lines of an invoice file whose group holds `itens` items before its note: one warning 153
// for each.
std::vector<std::string> NotasComItensAntesDaNota(int itens);

// The lines of a form file with `registros` records before any request: one warning 10 for each.
std::vector<std::string> FichasComRegistrosForaDeSolicitacao(int registros);

}  // namespace quorv::teste

#endif  // QUORVVALIDA_TESTS_ROBUSTEZ_ROBUSTEZ_HPP_
