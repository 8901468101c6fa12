-- Converts an IEEE single to XFloat: for an adder (target 0), a multiplier (1) or a divider (2). Exact, so
-- roundconvert changes nothing; a subnormal number is zero.
--   cycle 1  unpack:   flags, hidden one, sign bits in front; ones' complement of a negative number
--   cycle 2  convert:  one more makes it the two's complement; a divider takes sign and magnitude
-- Latency 1 + outputpipe cycles, 1 for a divider.
library ieee;
use ieee.std_logic_1164.all;
use ieee.numeric_std.all;

entity xfc_castftox is
  generic (target : natural; roundconvert : natural; mantissa : positive; outputpipe : natural);
  port (sysclk, reset, enable : in std_logic;
        aa : in std_logic_vector(32 downto 1);
        cc : out std_logic_vector(mantissa + 10 downto 1);
        ccsat, cczip, ccnan : out std_logic);
end xfc_castftox;

architecture rtl of xfc_castftox is
  constant exponent_bits   : positive := 10;
  constant ieee_exponent   : positive := 8;
  constant fraction_bits   : positive := 23;
  constant significand_bits : positive := fraction_bits + 1;

  function signs_in_front return positive is
  begin
    if target = 0 then return 5; else return 1; end if;   -- the adder has four guard bits
  end signs_in_front;
  function pipelined return natural is
  begin
    if target /= 2 then return outputpipe; else return 0; end if;
  end pipelined;
  constant signs : positive := signs_in_front;
  constant tail  : natural := mantissa - significand_bits - signs;

  -- flags: sat, zip, nan from low to high
  signal flags, flags_q, flags_cc : std_logic_vector(2 downto 0);
  signal exponent, exponent_q : std_logic_vector(ieee_exponent - 1 downto 0);
  signal exponent_cc : std_logic_vector(exponent_bits - 1 downto 0);
  signal significand, significand_q : std_logic_vector(significand_bits - 1 downto 0);
  signal sign, sign_q : std_logic_vector(0 downto 0);
  signal increment : unsigned(0 downto 0);
  signal magnitude_sum : std_logic_vector(significand_bits - 1 downto 0);
  signal front : std_logic_vector(signs - 1 downto 0);
  signal low_bits : std_logic_vector(tail - 1 downto 0);
  signal converted, mantissa_cc : std_logic_vector(mantissa - 1 downto 0);
  signal wide_exponent : std_logic_vector(exponent_bits - 1 downto 0);
  signal exponent_is_zero, exponent_is_ones, fraction_is_zero : std_logic;
begin
  assert target <= 2 report "xfc_castftox: target is 0, 1 or 2" severity failure;
  assert roundconvert <= 1 report "xfc_castftox: roundconvert is 0 or 1" severity failure;
  assert mantissa = 32 or mantissa = 36 report "xfc_castftox: mantissa is 32 or 36" severity failure;
  assert outputpipe <= 1 report "xfc_castftox: outputpipe is 0 or 1" severity failure;

  -- unpack
  sign(0) <= aa(32);
  exponent <= aa(31 downto 24);
  exponent_is_zero <= '1' when unsigned(aa(31 downto 24)) = 0 else '0';
  exponent_is_ones <= '1' when unsigned(aa(31 downto 24)) = 255 else '0';
  fraction_is_zero <= '1' when unsigned(aa(23 downto 1)) = 0 else '0';
  flags <= (exponent_is_ones and not fraction_is_zero) & exponent_is_zero & (exponent_is_ones and fraction_is_zero);
  significand <= not ('1' & aa(23 downto 1)) when target /= 2 and sign(0) = '1' else '1' & aa(23 downto 1);

  unpack_flags : entity work.xfc_register generic map (3, pipelined) port map (sysclk, enable, flags, flags_q);
  unpack_sign : entity work.xfc_register generic map (1, pipelined) port map (sysclk, enable, sign, sign_q);
  unpack_exponent : entity work.xfc_register generic map (ieee_exponent, pipelined)
    port map (sysclk, enable, exponent, exponent_q);
  unpack_significand : entity work.xfc_register generic map (significand_bits, pipelined)
    port map (sysclk, enable, significand, significand_q);

  -- convert: the significand is never zero, so nothing is carried into the sign
  increment <= unsigned(sign_q) when target /= 2 else "0";
  magnitude_sum <= std_logic_vector(unsigned(significand_q) + increment);
  front <= (others => sign_q(0));
  low_bits <= (others => '0');
  converted <= front & magnitude_sum & low_bits;
  wide_exponent <= "00" & exponent_q;

  convert_flags : entity work.xfc_register generic map (3, 1) port map (sysclk, enable, flags_q, flags_cc);
  convert_exponent : entity work.xfc_register generic map (exponent_bits, 1)
    port map (sysclk, enable, wide_exponent, exponent_cc);
  convert_mantissa : entity work.xfc_register generic map (mantissa, 1)
    port map (sysclk, enable, converted, mantissa_cc);

  cc <= mantissa_cc & exponent_cc;
  ccsat <= flags_cc(0);
  cczip <= flags_cc(1);
  ccnan <= flags_cc(2);
end rtl;
