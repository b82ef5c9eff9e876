// The return file of the web facade: a heading and one entry per warning, for a person to read.
// Written in Windows-1252 with CR LF, as the treasury's web system reads it; its widths count
// characters.
#ifndef QUORVVALIDA_SRC_WEB_RETORNO_HPP_
#define QUORVVALIDA_SRC_WEB_RETORNO_HPP_

#include <cstdint>
#include <string>
#include <string_view>

#include "quorvvalida/falha.hpp"

namespace quorv::web {

// The kind of file validated, which decides the reader, the heading and the identification.
enum class TipoRetorno { kNotas, kFichas };

// Reads the warnings file with the reader of its kind and writes the return file: the heading
// with the remessa number, then every warning. False when the return file could not be created,
// in which case nothing is written. `falha`, when given, receives Nenhuma, RetornoNaoCriado or
// EscritaRetorno (a write failed: the file is incomplete).
bool GravaRetorno(TipoRetorno tipo, const std::string& caminhoAdvertencias,
                  const std::string& caminhoRetorno, std::string_view numeroRemessa,
                  Falha* falha = nullptr);

// After a run: when the working directory holds a warnings file, writes the return file at the
// plain concatenation directory + name (the caller gives the separator), deletes the warnings
// file and answers false; without a warnings file answers true. `falha`, when given, receives
// what GravaRetorno tells (Nenhuma when no return file was due).
bool Relata(TipoRetorno tipo, const std::string& diretorio, const std::string& nomeRetorno,
            std::string_view numeroRemessa, Falha* falha = nullptr);

// The facade's answer once its run is over, `falha` holding the run's failure. A run that found
// the input to be its own warnings file answers false: that file is never read into a return file
// nor deleted. Otherwise Relata's answer; `falha` keeps the run's failure, or receives the return
// file's when the run had none.
bool Conclui(TipoRetorno tipo, const std::string& diretorio, const std::string& nomeRetorno,
             std::string_view numeroRemessa, Falha& falha);

// True when the return file, at the plain concatenation directory + name, would be the file to
// validate or the directory's warnings file, by identity when the files exist (links, "./" and
// ".." included) and by their resolved paths otherwise: writing it would destroy what it is made
// from.
bool RetornoColide(const std::string& arquivo, const std::string& diretorio,
                   const std::string& nomeRetorno);

// The lines of one warning as the return file holds them (Windows-1252, each ended by CR LF),
// from the reader's items (UTF-8).
std::string LinhasDoAviso(TipoRetorno tipo, std::string_view tr, std::string_view nota,
                          int32_t linha, std::string_view descricao);

}  // namespace quorv::web

#endif  // QUORVVALIDA_SRC_WEB_RETORNO_HPP_
