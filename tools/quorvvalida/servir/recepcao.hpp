// A request's file, written to disk as it arrives, so that no upload is ever held in memory.
#ifndef QUORVVALIDA_TOOLS_SERVIR_RECEPCAO_HPP_
#define QUORVVALIDA_TOOLS_SERVIR_RECEPCAO_HPP_

#include <chrono>
#include <cstdint>
#include <string>
#include <vector>

namespace quorv::servico {

class Recepcao {
 public:
  enum class Falha {
    kNenhuma,
    kGrande,   // more bytes than the limit
    kLenta,    // the body did not arrive in the time allowed
    kEscrita,  // the disk refused the bytes
    kCampo,    // a form field other than one "arquivo"
  };

  struct Limites {
    std::uint64_t bytes = 0;
    double segundosBase = 0;  // time for the body, plus one second per `taxaMinima` bytes
    std::uint64_t taxaMinima = 1;
  };

  Recepcao(const std::string& caminho, const Limites& limites);
  ~Recepcao();
  Recepcao(const Recepcao&) = delete;
  Recepcao& operator=(const Recepcao&) = delete;

  // False when the file could not be created (errno tells why).
  bool Aberta() const { return descritor_ >= 0; }

  // A piece of the file; false (and the reason in Motivo) when the upload must stop.
  bool Recebe(const char* dados, std::size_t tamanho);
  // A form field starts: only one, named "arquivo", is taken.
  bool Campo(const std::string& nome);
  // Writes what is left and closes the file; false when that failed.
  bool Conclui();

  Falha Motivo() const { return falha_; }
  bool RecebeuCampo() const { return campos_ > 0; }
  std::uint64_t Bytes() const { return bytes_; }
  // Lines of the file: its line feeds, and one more when the last line has none.
  std::uint64_t Linhas() const { return quebras_ + (bytes_ > 0 && ultimo_ != '\n' ? 1 : 0); }
  // Seconds since a byte last arrived (or since the start).
  double SegundosParado() const;

 private:
  bool Grava(const char* dados, std::size_t tamanho);
  bool EscreveTudo(const char* dados, std::size_t tamanho);
  bool Descarrega();

  int descritor_ = -1;
  Limites limites_;
  std::chrono::steady_clock::time_point inicio_;
  std::chrono::steady_clock::time_point ultimaChegada_;
  std::vector<char> buffer_;
  std::size_t usados_ = 0;
  std::uint64_t bytes_ = 0;
  std::uint64_t quebras_ = 0;
  char ultimo_ = '\0';
  int campos_ = 0;
  Falha falha_ = Falha::kNenhuma;
};

}  // namespace quorv::servico

#endif  // QUORVVALIDA_TOOLS_SERVIR_RECEPCAO_HPP_
