-- Converts a YDouble value in adder form to an integer of 32 bits, toward zero as C does. Out of range it is the
-- nearest end, nan is 0. Exponent field 0 is zero.
--   step place:     a window for the integer's bits and 31 behind them, shifted by no, one or two words
--   step coarse:    shift right by whole bytes
--   step fine:      shift right by single bits, with what goes over the edge
--   step truncate:  toward zero is one more for a negative number that lost bits
--   step settle:    the ends of the range
-- Latency 2 + normspeed cycles: registers behind place, fine and settle; a fourth stands behind coarse, then truncate.
library ieee;
use ieee.std_logic_1164.all;
use ieee.numeric_std.all;

entity xfc_castytol is
  generic (normspeed : positive);
  port (sysclk, reset, enable : in std_logic;
        aa : in std_logic_vector(77 downto 1);
        aasat, aazip, aanan : in std_logic;
        cc : out std_logic_vector(32 downto 1));
end xfc_castytol;

architecture rtl of xfc_castytol is
  constant exponent_bits : positive := 13;
  constant mantissa_bits : positive := 64;
  constant exponent_without_shift : positive := 1112;   -- the mantissa's lowest bit is worth 2 ** 31
  constant place_border    : natural := 1;
  constant coarse_border   : natural := normspeed / 2;
  constant truncate_border : natural := normspeed / 3;
  signal flags : std_logic_vector(2 downto 0);
begin
  assert normspeed <= 3 report "xfc_castytol: normspeed is 1 to 3" severity failure;

  -- place, coarse, fine, truncate, settle
  flags <= aanan & aazip & aasat;
  to_long : entity work.xfc_adder_form_to_long
    generic map (exponent_bits, exponent_without_shift, place_border, coarse_border, truncate_border)
    port map (sysclk, enable, aa(mantissa_bits + exponent_bits downto exponent_bits + 1), aa(exponent_bits downto 1),
              flags, cc);
end rtl;
